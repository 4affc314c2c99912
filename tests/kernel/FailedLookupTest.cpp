// A mode whose look-up fails prints a line once in a note. The lines come sample by sample and slot
// by slot, whatever renders.
#include "tests/kernel/Kernels.h"
#include "tests/kernel/PrintedLines.h"

#include "params/ParameterTable.h"

#include <array>
#include <cstdio>
#include <limits>
#include <numbers>

using namespace zelvatone;

namespace {

constexpr double kSampleRate = 48000.0;

void render(ZelvatoneEngine& engine, std::int32_t samples) {
    std::array<float, 8> left{};
    std::array<float, 8> right{};
    std::array<float*, 2> outputs = {left.data(), right.data()};
    engine.render(nullptr, outputs.data(), samples);
}

// One mode in each of the two highest slots: `first` Hz in slot 31 and `second` in slot 30.
void startTwoSines(ZelvatoneEngine& engine, float first, float second) {
    engine.setSampleRate(float{kSampleRate});
    engine.currentProgram->parameters[kModeInit]->value = 1.0F;
    engine.currentProgram->parameters[kMinModes]->value = 1.0F;
    engine.currentProgram->parameters[kMaxModes]->value = 1.0F;
    render(engine, 1);
    engine.noteFrequency[0] = first;
    engine.noteFrequency[1] = second;
    engine.noteOn(0, 100);
    engine.noteOn(1, 100);
}

std::string lineFor(std::int32_t index, double phase) {
    char text[80];
    std::snprintf(text, sizeof text, "Invalid lookup index: %i from %f blah\n", index, phase);
    return text;
}

class FailedLookups : public EachKernel {};

TEST_P(FailedLookups, PrintOnceForEachModeOfANote) {
    ZelvatoneEngine engine(GetParam());
    startTwoSines(engine, 3000.0F, 1000.0F);
    engine.currentProgram->parameters[kChop]->value = 0.0005F; // no entry is in use
    PrintedLines printed;
    for (int block = 0; block < 3; ++block) {
        render(engine, 5);
    }
    EXPECT_EQ(printed.take(), lineFor(0, 0.0) + lineFor(0, 0.0));
    engine.noteOn(1, 100);
    render(engine, 5);
    EXPECT_EQ(printed.take(), lineFor(0, 0.0));
}

TEST_P(FailedLookups, PrintInTheOrderOfSamplesThenSlots) {
    ZelvatoneEngine engine(GetParam());
    startTwoSines(engine, 3000.0F, 1000.0F);
    render(engine, 8);
    engine.voices[31]->phase[0] = 20.0F; // fails at the first sample, and is back in the next one
    engine.voices[30]->freq[0] = std::numeric_limits<float>::infinity(); // fails from the second on
    PrintedLines printed;
    render(engine, 5);
    const int entry = static_cast<int>(1024 / (2.0 * std::numbers::pi) * 20.0);
    EXPECT_EQ(printed.take(),
              lineFor(entry, 20.0) +
                  lineFor(INT32_MIN + 1024, -std::numeric_limits<double>::quiet_NaN()));

    engine.voices[31]->reportedModes.clear();
    engine.voices[30]->reportedModes.clear();
    engine.voices[31]->phase[0] = 20.0F;
    render(engine, 5);
    EXPECT_EQ(printed.take(), lineFor(INT32_MIN + 1024, -std::numeric_limits<double>::quiet_NaN()) +
                                  lineFor(entry, 20.0));
}

TEST_P(FailedLookups, PrintForOneBrokenVoiceWhileAnotherSounds) {
    ZelvatoneEngine engine(GetParam());
    startTwoSines(engine, 3000.0F, 1000.0F);
    render(engine, 8);
    engine.voices[31]->phase[0] = std::numeric_limits<float>::infinity();
    PrintedLines printed;
    render(engine, 1);
    // A float that does not fit is converted to the lowest integer; a whole table is added to that.
    EXPECT_EQ(printed.take(), lineFor(INT32_MIN + 1024, std::numeric_limits<double>::infinity()));
}

ZELVATONE_FOR_EACH_KERNEL(FailedLookups);

} // namespace
