// What a parameter stores of a value that it is given.
#include "params/ParameterTable.h"
#include "params/SynthParameter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zelvatone {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

float stored(SynthParameter&& parameter, float given) {
    parameter.setValue(given);
    return parameter.value;
}

SynthParameter chop() {
    return {"Chop", "", 0.1F, 1.0F, 1.0F};
}

IntegerSynthParameter modeShift() {
    return {"Mode Shift", "osc", -3.0F, 3.0F, 0.0F};
}

TEST(SetValue, KeepsWhatLiesInTheRangeTheEndsIncluded) {
    EXPECT_EQ(stored(chop(), 0.1F), 0.1F);
    EXPECT_EQ(stored(chop(), 0.3333F), 0.3333F);
    EXPECT_EQ(stored(chop(), 1.0F), 1.0F);
}

TEST(SetValue, ClampsToTheEnds) {
    EXPECT_EQ(stored(chop(), 0.0999F), 0.1F);
    EXPECT_EQ(stored(chop(), -kInfinity), 0.1F);
    EXPECT_EQ(stored(chop(), 1.0001F), 1.0F);
    EXPECT_EQ(stored(chop(), kInfinity), 1.0F);
}

TEST(SetValue, KeepsNotANumber) {
    EXPECT_TRUE(std::isnan(stored(chop(), kNan)));
    EXPECT_TRUE(std::isnan(stored(PercentSynthParameter("Sustain", "%", 0, 1, 0), kNan)));
    EXPECT_TRUE(std::isnan(stored(modeShift(), kNan)));
    EXPECT_TRUE(std::isnan(stored(WaveSynthParameter("Wave", "", 0, 4, 0), kNan)));
    EXPECT_TRUE(std::isnan(stored(BeatsSynthParameter("Shift", "", -5, 5, 0), kNan)));
}

TEST(SetValue, AsksForTheMinimumFirst) {
    // With the ends the wrong way round, 1.5 is below the one and above the other.
    EXPECT_EQ(stored(SynthParameter("Crossed", "", 2.0F, 1.0F, 0.0F), 1.5F), 2.0F);
}

TEST(SetValue, LeavesTheDefaultAndTheRangeAlone) {
    SynthParameter parameter("Jitter", "Hz", 0.0F, 100.0F, 7.0F);
    parameter.setValue(1000.0F);
    EXPECT_EQ(parameter.defaultValue, 7.0F);
    EXPECT_EQ(parameter.min, 0.0F);
    EXPECT_EQ(parameter.max, 100.0F);
}

TEST(SetValue, RoundsAWholeNumberDownAndNotToTheNearest) {
    EXPECT_EQ(stored(modeShift(), 1.999F), 1.0F);
    EXPECT_EQ(stored(modeShift(), -0.001F), -1.0F);
    // 6 x 0.333333 - 3, how a factory program says "a third of the way up".
    const auto third = static_cast<float>(-3.0 + 6.0 * 0.333333);
    EXPECT_EQ(stored(modeShift(), third), -2.0F);
}

TEST(SetValue, RoundsAWholeNumberDownBeforeItClamps) {
    EXPECT_EQ(stored(modeShift(), 3.9F), 3.0F);
    EXPECT_EQ(stored(modeShift(), -3.1F), -3.0F);
    // A range that does not begin on a whole number: what is rounded below it is lifted to it.
    EXPECT_EQ(stored(IntegerSynthParameter("Odd", "", 0.5F, 2.5F, 1.0F), 0.75F), 0.5F);
    EXPECT_EQ(stored(IntegerSynthParameter("Odd", "", 0.5F, 2.5F, 1.0F), 9.0F), 2.5F);
}

TEST(SetValue, RoundsWavesAndBeatsDownToo) {
    EXPECT_EQ(stored(WaveSynthParameter("Wave", "", 0, 4, 0), 3.99F), 3.0F);
    EXPECT_EQ(stored(WaveSynthParameter("Wave", "", 0, 4, 0), 5.0F), 4.0F);
    EXPECT_EQ(stored(BeatsSynthParameter("Shift", "", -5, 5, 0), -0.5F), -1.0F);
    EXPECT_EQ(stored(BeatsSynthParameter("Shift", "", -5, 5, 0), -7.0F), -5.0F);
}

TEST(SetValue, MakesZeroOfTheHostsMiddleOfModeShift) {
    IntegerSynthParameter shift = modeShift();
    shift.setValue(shift.toUnits(shift.min, shift.max, 0.5F));
    EXPECT_EQ(shift.value, 0.0F);
}

TEST(Construction, TakesTheDefaultAsTheValueNeitherClampedNorRounded) {
    const SynthParameter outside("Outside", "Hz", 0.0F, 1.0F, 5.0F);
    EXPECT_EQ(outside.defaultValue, 5.0F);
    EXPECT_EQ(outside.value, 5.0F);
    const IntegerSynthParameter broken("Broken", "", 0.0F, 1.0F, 0.5F);
    EXPECT_EQ(broken.value, 0.5F);
}

TEST(Construction, GivesAnUnnamedParameterFromZeroToOneByDefault) {
    const SynthParameter parameter;
    EXPECT_EQ(parameter.name, "Unnamed Parameter");
    EXPECT_EQ(parameter.label, "");
    EXPECT_EQ(parameter.max, 1.0F);
    EXPECT_EQ(parameter.min, 0.0F);
    EXPECT_EQ(parameter.defaultValue, 0.0F);
    EXPECT_EQ(parameter.value, 0.0F);
    EXPECT_EQ(parameter.toUnits(0.0F, 4.0F, 0.4F), 1.6F);
    EXPECT_EQ(parameter.toNormalised(0.0F, 2.0F, 1.5F), 0.75F);
}

} // namespace
} // namespace zelvatone
