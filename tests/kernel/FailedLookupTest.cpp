// Look-ups that fail print a line each, sample by sample and voice by voice, whatever renders.
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

TEST_P(FailedLookups, PrintInTheOrderOfSamplesThenSlots) {
    ZelvatoneEngine engine(GetParam());
    startTwoSines(engine, 3000.0F, 1000.0F);
    engine.currentProgram->parameters[kChop]->value = 0.0005F; // no entry is in use
    std::string expected;
    for (int sample = 0; sample < 5; ++sample) {
        const double turned = 2.0 * std::numbers::pi * sample / kSampleRate;
        expected += lineFor(0, 1000.0 * turned) + lineFor(0, 3000.0 * turned);
    }
    PrintedLines printed;
    render(engine, 5);
    EXPECT_EQ(printed.take(), expected);
}

TEST_P(FailedLookups, PrintForOneBrokenVoiceWhileAnotherSounds) {
    ZelvatoneEngine engine(GetParam());
    startTwoSines(engine, 3000.0F, 1000.0F);
    render(engine, 8);
    engine.voices[31]->phase[0] = std::numeric_limits<float>::infinity();
    PrintedLines printed;
    render(engine, 1);
    // The conversion's answer to what does not fit, the lowest integer, and a whole table added.
    EXPECT_EQ(printed.take(), lineFor(INT32_MIN + 1024, std::numeric_limits<double>::infinity()));
}

ZELVATONE_FOR_EACH_KERNEL(FailedLookups);

} // namespace
