// From knobs to the settings that voices read.
#include "engine/ParameterReading.h"
#include "engine/WaveTable.h"
#include "params/ParameterTable.h"
#include "tests/engine/EngineFixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace zelvatone {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

class ParameterReading : public ::testing::Test {
protected:
    SynthProgram program_ = makeDefaultProgram();
    VoiceSettings settings_;

    void SetUp() override { wavetable::build(settings_, settings_.tableSize); }

    // Past clamping and flooring: how the reading itself rounds.
    const VoiceSettings& readWith(ParameterIndex index, float value) {
        program_.parameters[static_cast<std::size_t>(index)]->value = value;
        readVoiceSettings(program_.parameters, settings_);
        return settings_;
    }
};

TEST_F(ParameterReading, FillsEverySettingFromTheDefaults) {
    readVoiceSettings(program_.parameters, settings_);
    EXPECT_EQ(settings_.modeShift, 0);
    EXPECT_EQ(settings_.shiftBeats, 2.0);
    EXPECT_EQ(settings_.minModes, 2);
    EXPECT_EQ(settings_.maxModes, 20);
    EXPECT_EQ(settings_.falloff, -1.0F);
    EXPECT_EQ(settings_.parity, 0.0F);
    EXPECT_EQ(settings_.jitterHz, 0.0F);
    EXPECT_EQ(settings_.dropFactor, 1.0F);
    EXPECT_EQ(settings_.chop, 1.0F);
    EXPECT_EQ(settings_.primeModes, 0);
    EXPECT_EQ(settings_.detune, 0.5F);
    EXPECT_EQ(settings_.primePower, 0.5F);
    EXPECT_EQ(settings_.dropModulus, 1);
    EXPECT_EQ(settings_.waveKind, 0);
    EXPECT_EQ(settings_.crushBits, 0);
    EXPECT_EQ(settings_.blendSeconds, static_cast<double>(0.01F));
    EXPECT_EQ(settings_.exitPeel, 0.0F);
    EXPECT_EQ(settings_.initialModes, 10);
}

TEST_F(ParameterReading, LeavesAloneWhatNoKnobDecides) {
    settings_.tempo = 99.0;
    settings_.bendRatio = 1.5;
    settings_.secondsPerSample = 0.25;
    settings_.modeKind = 1;
    settings_.clusterOffsetHz = 3.0F;
    readVoiceSettings(program_.parameters, settings_);
    EXPECT_EQ(settings_.tempo, 99.0);
    EXPECT_EQ(settings_.bendRatio, 1.5);
    EXPECT_EQ(settings_.secondsPerSample, 0.25);
    EXPECT_EQ(settings_.modeKind, 1);
    EXPECT_EQ(settings_.clusterOffsetHz, 3.0F);
    EXPECT_EQ(settings_.tableSize, 1024);
}

TEST_F(ParameterReading, TakesContinuousKnobsAsTheyStand) {
    EXPECT_EQ(readWith(kFalloff, -2.345F).falloff, -2.345F);
    EXPECT_EQ(readWith(kParity, -0.3F).parity, -0.3F);
    EXPECT_EQ(readWith(kJitter, 12.7F).jitterHz, 12.7F);
    EXPECT_EQ(readWith(kChop, 0.77F).chop, 0.77F);
    EXPECT_EQ(readWith(kDetune, 1.3F).detune, 1.3F);
    EXPECT_EQ(readWith(kPower, 0.01F).primePower, 0.01F);
    EXPECT_EQ(readWith(kExitPeel, -4.9F).exitPeel, -4.9F);
    EXPECT_EQ(readWith(kBlendTime, 0.3F).blendSeconds, static_cast<double>(0.3F));
}

TEST_F(ParameterReading, WidensEnvelopeTimes) {
    program_.parameters[kAttack]->setValue(0.3F);
    program_.parameters[kDecay]->setValue(1.1F);
    program_.parameters[kSustain]->setValue(0.6F);
    program_.parameters[kRelease]->setValue(1.9F);
    EnvelopeSettings envelope;
    readEnvelopeSettings(program_.parameters, envelope);
    EXPECT_EQ(envelope.attack, static_cast<double>(0.3F));
    EXPECT_EQ(envelope.decay, static_cast<double>(1.1F));
    EXPECT_EQ(envelope.sustain, static_cast<double>(0.6F));
    EXPECT_EQ(envelope.release, static_cast<double>(1.9F));
}

TEST_F(ParameterReading, RaisesTwoToTheShiftInterval) {
    for (std::int32_t exponent = -5; exponent <= 5; ++exponent) {
        EXPECT_EQ(readWith(kShiftInterval, static_cast<float>(exponent)).shiftBeats,
                  std::ldexp(1.0, exponent));
    }
    // The root of 2 as a float, widened again.
    EXPECT_EQ(readWith(kShiftInterval, 0.5F).shiftBeats, 1.41421353816986083984375);
}

TEST_F(ParameterReading, CutsModeInitOff) {
    EXPECT_EQ(readWith(kModeInit, 9.99F).initialModes, 9);
    EXPECT_EQ(readWith(kModeInit, 10.5F).initialModes, 10);
    EXPECT_EQ(readWith(kModeInit, -0.99F).initialModes, 0);
    EXPECT_EQ(readWith(kModeInit, kNan).initialModes, INT32_MIN);
}

TEST_F(ParameterReading, GivesTheDropAsAFactorASample) {
    EXPECT_EQ(readWith(kFreqDrop, 8.0F).dropFactor, 1.01F);
    EXPECT_EQ(readWith(kFreqDrop, -8.0F).dropFactor, 0.99F);
    // 10^-7 is most of a float step above 1, and nearly two of the finer steps below it.
    EXPECT_EQ(readWith(kFreqDrop, 3.0F).dropFactor, 1.0F + 0x1p-23F);
    EXPECT_EQ(readWith(kFreqDrop, -3.0F).dropFactor, 1.0F - 0x1p-23F);
    // 3.2e-8 is less than half a step above 1, and more than half a step below it.
    EXPECT_EQ(readWith(kFreqDrop, 2.5F).dropFactor, 1.0F);
    EXPECT_EQ(readWith(kFreqDrop, -2.5F).dropFactor, 1.0F - 0x1p-24F);
}

TEST_F(ParameterReading, GivesNoDropAroundTheMiddle) {
    for (const float v : {0.0F, -0.0F, 1.0F, -1.0F, 2.7F, -2.4F}) {
        EXPECT_EQ(readWith(kFreqDrop, v).dropFactor, 1.0F) << v;
    }
}

TEST_F(ParameterReading, RoundsEachStepOfTheDropToSinglePrecision) {
    // Worked out to 40 digits, rounded after each step. The exponents of the first two lie next to
    // a tie of the sum, and their own rounding takes them across it.
    EXPECT_EQ(readWith(kFreqDrop, 0x1.633c62p+1F).dropFactor, 1.0F);
    EXPECT_EQ(readWith(kFreqDrop, -0x1.79c68ap+1F).dropFactor, 1.0F - 0x1p-24F);
    // With the power unrounded the first of these is a float higher, the second lower and the
    // third higher.
    EXPECT_EQ(readWith(kFreqDrop, -0x1.b98066p+2F).dropFactor, 0x1.ff984p-1F);
    EXPECT_EQ(readWith(kFreqDrop, -0x1.f96398p+2F).dropFactor, 0x1.fbf6bcp-1F);
    EXPECT_EQ(readWith(kFreqDrop, 0x1.fc9422p+2F).dropFactor, 0x1.024374p+0F);
}

TEST_F(ParameterReading, RebuildsTheTableOnlyWhenWaveOrCrushChanges) {
    readVoiceSettings(program_.parameters, settings_);
    settings_.table[5] = 42.0F;
    readWith(kChop, 0.5F);
    readWith(kWave, 0.4F); // still 0
    EXPECT_EQ(settings_.table[5], 42.0F);
    readWith(kWave, 0.5F);
    EXPECT_EQ(settings_.table[5], -1.0F);
    settings_.table[5] = 42.0F;
    readWith(kWave, 1.4F);
    EXPECT_EQ(settings_.table[5], 42.0F);
    readWith(kCrush, 1.0F);
    EXPECT_EQ(settings_.table[5], -1.0F);
}

TEST_F(ParameterReading, RebuildsTheSameTableInTheSamePlace) {
    const float* table = settings_.table.get();
    const std::vector<float> sine(table, table + 1024);
    readWith(kWave, 4.0F);
    EXPECT_NE(std::vector<float>(table, table + 1024), sine);
    readWith(kWave, 0.0F);
    EXPECT_EQ(settings_.table.get(), table);
    EXPECT_EQ(std::vector<float>(table, table + 1024), sine);
}

TEST_F(ParameterReading, NeverCrushesACrushedTable) {
    readWith(kCrush, 1.0F);
    readWith(kCrush, 0.0F);
    EXPECT_EQ(settings_.table[256], 1.0F);
    EXPECT_NEAR(settings_.table[128], std::sqrt(0.5), 1e-7);
    program_.parameters[kWave]->value = 2.0F;
    readWith(kCrush, 1.0F);
    EXPECT_EQ(settings_.table[511], -1.0F); // the saw, in two levels
    EXPECT_EQ(settings_.table[512], 1.0F);
}

TEST_F(ParameterReading, HandsReservedOnRounded) {
    const auto shaperSetAt = [this](float value) {
        program_.parameters[kReserved]->value = value;
        return readShaperSet(program_.parameters);
    };
    EXPECT_EQ(shaperSetAt(0.0F), 0);
    EXPECT_EQ(shaperSetAt(0.5F), 1);
    EXPECT_EQ(shaperSetAt(3.4999998F), 3);
    EXPECT_EQ(shaperSetAt(3.5F), 4);
    EXPECT_EQ(shaperSetAt(-0.5F), -1);
    EXPECT_EQ(shaperSetAt(kNan), INT32_MIN);
}

// The knobs that are read as whole numbers, to the nearest.
using Field = std::int32_t VoiceSettings::*;

class RoundedReading : public ParameterReading,
                       public ::testing::WithParamInterface<std::pair<ParameterIndex, Field>> {
protected:
    std::int32_t readAt(float value) {
        return readWith(GetParam().first, value).*GetParam().second;
    }
};

TEST_P(RoundedReading, TakesHalvesAwayFromZero) {
    EXPECT_EQ(readAt(2.5F), 3);
    EXPECT_EQ(readAt(0.5F), 1);
    EXPECT_EQ(readAt(-0.5F), -1);
    EXPECT_EQ(readAt(-2.5F), -3);
}

TEST_P(RoundedReading, TakesEverythingElseToTheNearest) {
    EXPECT_EQ(readAt(2.0F), 2);
    EXPECT_EQ(readAt(2.4999998F), 2);
    EXPECT_EQ(readAt(-2.4999998F), -2);
    // Half of it is added in double precision: in single precision this would reach 1.
    EXPECT_EQ(readAt(std::nextafter(0.5F, 0.0F)), 0);
}

TEST_P(RoundedReading, GivesTheLowestIntegerForNotANumber) {
    EXPECT_EQ(readAt(kNan), INT32_MIN);
}

std::string nameOf(const ::testing::TestParamInfo<RoundedReading::ParamType>& row) {
    return test::nameWithoutBlanks(row.param.first);
}

INSTANTIATE_TEST_SUITE_P(, RoundedReading,
                         ::testing::Values(std::pair(kModeShift, &VoiceSettings::modeShift),
                                           std::pair(kMinModes, &VoiceSettings::minModes),
                                           std::pair(kMaxModes, &VoiceSettings::maxModes),
                                           std::pair(kModes, &VoiceSettings::primeModes),
                                           std::pair(kDropMod, &VoiceSettings::dropModulus),
                                           std::pair(kWave, &VoiceSettings::waveKind),
                                           std::pair(kCrush, &VoiceSettings::crushBits)),
                         nameOf);

} // namespace
} // namespace zelvatone
