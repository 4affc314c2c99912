// How units and the host's 0 to 1 map onto each other.
#include "params/SynthParameter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zelvatone {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

// The expected value of one operation: rounded to single precision at once.
float once(double exact) {
    return static_cast<float>(exact);
}

float toUnits(const SynthParameter& p, float normalised) {
    return p.toUnits(p.min, p.max, normalised);
}

float toNormalised(const SynthParameter& p, float units) {
    return p.toNormalised(p.min, p.max, units);
}

TEST(LinearMapping, PutsTheEndsOfTheHostsRangeOnTheEndsOfTheUnits) {
    const SynthParameter drop("Freq Drop", "", -8.0F, 8.0F, 0.0F);
    EXPECT_EQ(toUnits(drop, 0.0F), -8.0F);
    EXPECT_EQ(toUnits(drop, 0.25F), -4.0F);
    EXPECT_EQ(toUnits(drop, 1.0F), 8.0F);
    EXPECT_EQ(toNormalised(drop, -8.0F), 0.0F);
    EXPECT_EQ(toNormalised(drop, 4.0F), 0.75F);
    EXPECT_EQ(toNormalised(drop, 8.0F), 1.0F);
}

TEST(LinearMapping, GoesOnBeyondTheEnds) {
    const SynthParameter falloff("Falloff", "", -3.0F, 0.0F, -1.0F);
    EXPECT_EQ(toUnits(falloff, 1.5F), 1.5F);
    EXPECT_EQ(toUnits(falloff, -1.0F), -6.0F);
    EXPECT_EQ(toNormalised(falloff, 3.0F), 2.0F);
}

TEST(LinearMapping, RoundsEveryOperationToSinglePrecision) {
    const SynthParameter chop("Chop", "", 0.1F, 1.0F, 1.0F);
    const float span = once(1.0 - static_cast<double>(0.1F));
    const float scaled = once(static_cast<double>(span) * static_cast<double>(0.08F));
    EXPECT_EQ(toUnits(chop, 0.08F), once(static_cast<double>(0.1F) + static_cast<double>(scaled)));
    // One rounding at the end would give the float above it.
    EXPECT_EQ(toUnits(chop, 0.08F), 0x1.604188p-3F);
    const float offset = once(static_cast<double>(0.11F) - static_cast<double>(0.1F));
    EXPECT_EQ(toNormalised(chop, 0.11F),
              once(static_cast<double>(offset) / static_cast<double>(span)));
    EXPECT_EQ(toNormalised(chop, 0.11F), 0x1.6c16bep-7F);
}

TEST(LinearMapping, KeepsWholeUnitsOfAnEvenRangeExactly) {
    const SynthParameter peel("Exit Peel", "", -5.0F, 5.0F, 0.0F);
    // 10 x 0.3 is 3 in single precision, although the nearest float to 0.3 lies above it.
    EXPECT_EQ(toUnits(peel, 0.3F), -2.0F);
}

TEST(LinearMapping, BelongsToThePercentKindToo) {
    const PercentSynthParameter sustain("Sustain", "%", 0.0F, 1.0F, 0.7F);
    EXPECT_EQ(toUnits(sustain, 0.625F), 0.625F);
    EXPECT_EQ(toNormalised(sustain, 0.625F), 0.625F);
}

TEST(FlooredMapping, RoundsTowardsMinusInfinity) {
    const IntegerSynthParameter shift("Mode Shift", "osc", -3.0F, 3.0F, 0.0F);
    EXPECT_EQ(toUnits(shift, 0.0F), -3.0F);
    EXPECT_EQ(toUnits(shift, 0.25F), -2.0F); // -1.5
    EXPECT_EQ(toUnits(shift, 0.499F), -1.0F);
    EXPECT_EQ(toUnits(shift, 0.5F), 0.0F);
    EXPECT_EQ(toUnits(shift, 0.999F), 2.0F);
    EXPECT_EQ(toUnits(shift, 1.0F), 3.0F);
}

TEST(FlooredMapping, RoundsTheSumToSinglePrecisionBeforeTheFloor) {
    const IntegerSynthParameter modes("Max Modes", "osc", 0.0F, 100.0F, 20.0F);
    ASSERT_LT(100.0 * static_cast<double>(0.01F), 1.0);
    EXPECT_EQ(toUnits(modes, 0.01F), 1.0F);
    const BeatsSynthParameter beats("Shift Interval", "beats", -5.0F, 5.0F, 1.0F);
    const float belowATenth = std::nextafter(0.1F, 0.0F);
    ASSERT_LT(-5.0 + 10.0 * static_cast<double>(belowATenth), -4.0);
    EXPECT_EQ(toUnits(beats, belowATenth), -4.0F);
}

TEST(FlooredMapping, FloorsUnitsOnTheWayBack) {
    const IntegerSynthParameter shift("Mode Shift", "osc", -3.0F, 3.0F, 0.0F);
    EXPECT_EQ(toNormalised(shift, 0.75F), 0.5F);
    EXPECT_EQ(toNormalised(shift, -0.25F), once(2.0 / 6.0));
    EXPECT_EQ(toNormalised(shift, -3.0F), 0.0F);
    EXPECT_EQ(toNormalised(shift, 3.0F), 1.0F);
}

TEST(FlooredMapping, BelongsToWavesAndBeatsToo) {
    const WaveSynthParameter wave("Wave", "", 0.0F, 4.0F, 0.0F);
    EXPECT_EQ(toUnits(wave, 0.49F), 1.0F);
    EXPECT_EQ(toNormalised(wave, 3.9F), 0.75F);
    const BeatsSynthParameter beats("Shift Interval", "beats", -5.0F, 5.0F, 1.0F);
    EXPECT_EQ(toUnits(beats, 0.55F), 0.0F);
    EXPECT_EQ(toNormalised(beats, 0.9F), 0.5F);
}

TEST(Mapping, MapsNotANumberToNotANumber) {
    const SynthParameter jitter("Jitter", "Hz", 0.0F, 100.0F, 0.0F);
    const IntegerSynthParameter crush("Crush", "bits", 0.0F, 8.0F, 0.0F);
    EXPECT_TRUE(std::isnan(toUnits(jitter, kNan)));
    EXPECT_TRUE(std::isnan(toNormalised(jitter, kNan)));
    EXPECT_TRUE(std::isnan(toUnits(crush, kNan)));
    EXPECT_TRUE(std::isnan(toNormalised(crush, kNan)));
}

TEST(Mapping, IsCarriedByTheObjectAndNotByItsClass) {
    SynthParameter plain("Plain", "", 0.0F, 4.0F, 0.0F);
    const IntegerSynthParameter whole("Whole", "", 0.0F, 4.0F, 0.0F);
    plain.toUnits = whole.toUnits;
    EXPECT_EQ(toUnits(plain, 0.4F), 1.0F);
}

} // namespace
} // namespace zelvatone
