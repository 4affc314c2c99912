// A host may store a value that is not a number. What is heard then is open; what may not happen is
// a crash, a stray access or an endless loop.
#include "tests/engine/EngineFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace zelvatone {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

class NotANumber : public test::EngineTest, public ::testing::WithParamInterface<std::int32_t> {
protected:
    // Few modes and few samples, because modes without a phase print a line each. At this tempo
    // the set of modes shifts at every sample.
    void SetUp() override {
        set(kModeShift, 1.0F);
        set(kModeInit, 2.0F);
        set(kMaxModes, 4.0F);
        set(kModes, 2.0F);
        set(kJitter, 5.0F);
        engine_.setTempo(1e9F);
    }

    void putNanAt(std::int32_t index) {
        SynthParameter& parameter = test::knob(engine_, static_cast<ParameterIndex>(index));
        parameter.setValue(parameter.toUnits(parameter.min, parameter.max, kNan));
        ASSERT_TRUE(std::isnan(parameter.value));
    }
    void playNotes() {
        engine_.processMidi(0x90, 60, 100, 0);
        render(3);
        engine_.processMidi(0xE0, 0, 0x60, 0);
        engine_.processMidi(0x90, 127, 127, 0);
        render(3);
        engine_.processMidi(0x80, 60, 0, 0);
        render(3);
    }
};

TEST_P(NotANumber, IsStoredAndRenderedInOneParameter) {
    playNotes();
    putNanAt(GetParam());
    playNotes(); // into sounding notes, and new ones
    EXPECT_TRUE(std::isnan(test::knob(engine_, static_cast<ParameterIndex>(GetParam())).value));
}

TEST_P(NotANumber, IsRenderedFromTheFirstSampleOnInOneParameter) {
    putNanAt(GetParam());
    playNotes();
}

TEST_P(NotANumber, LeavesNoHarmBehindOnceItIsGone) {
    putNanAt(GetParam());
    playNotes();
    SynthParameter& parameter = test::knob(engine_, static_cast<ParameterIndex>(GetParam()));
    parameter.setValue(parameter.defaultValue);
    test::useEnvelope(engine_, 0.01F, 0.01F, 0.5F, 0.01F);
    engine_.setTempo(120.0F);
    engine_.processMidi(0x90, 69, 127, 0);
    render(4);
    const auto newest = static_cast<std::size_t>(
        std::find(engine_.voiceNotes.begin(), engine_.voiceNotes.end(), 69) -
        engine_.voiceNotes.begin());
    EXPECT_TRUE(std::isfinite(engine_.voices.at(newest)->amp[0]));
    EXPECT_TRUE(std::isfinite(engine_.voices.at(newest)->phase[0]));
}

std::string nameOf(const ::testing::TestParamInfo<std::int32_t>& row) {
    return test::nameWithoutBlanks(static_cast<ParameterIndex>(row.param));
}

INSTANTIATE_TEST_SUITE_P(, NotANumber, ::testing::Range(0, 23), nameOf);

using AllNotNumbers = NotANumber;

TEST_F(AllNotNumbers, AreStoredAndRenderedTogether) {
    playNotes();
    for (std::int32_t index = 0; index < kParameterCount; ++index) {
        putNanAt(index);
    }
    playNotes();
    for (const SynthParameter* parameter : engine_.currentProgram->parameters) {
        EXPECT_TRUE(std::isnan(parameter->value)) << parameter->name;
    }
}

TEST_F(AllNotNumbers, AreRenderedFromTheFirstSampleOn) {
    for (std::int32_t index = 0; index < kParameterCount; ++index) {
        putNanAt(index);
    }
    playNotes();
}

TEST_F(AllNotNumbers, AreRenderedWithATempoThatIsNotANumberToo) {
    for (const float tempo : {kNan, 0.0F, -120.0F, std::numeric_limits<float>::infinity()}) {
        engine_.setTempo(tempo);
        playNotes();
    }
}

} // namespace
} // namespace zelvatone
