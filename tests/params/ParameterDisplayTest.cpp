// The texts under the knobs.
#include "params/SynthParameter.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace zelvatone {
namespace {

constexpr float kHuge = std::numeric_limits<float>::max();

template<class Kind>
std::string shown(const char* label, float value) {
    return Kind("Name", label, -1000.0F, 1000.0F, value).getDisplay();
}

TEST(PlainDisplay, ShowsTwoDecimalsABlankAndTheLabel) {
    EXPECT_EQ(shown<SynthParameter>("s", 0.2F), "0.20 s");
    EXPECT_EQ(shown<SynthParameter>("Hz", 100.0F), "100.00 Hz");
    EXPECT_EQ(shown<SynthParameter>("Hz", -3.456F), "-3.46 Hz");
}

TEST(PlainDisplay, KeepsTheBlankWhenThereIsNoLabel) {
    EXPECT_EQ(shown<SynthParameter>("", 0.5F), "0.50 ");
}

TEST(PlainDisplay, RoundsTheStoredValueWithTiesToEven) {
    EXPECT_EQ(shown<SynthParameter>("", 0.125F), "0.12 ");
    EXPECT_EQ(shown<SynthParameter>("", 0.375F), "0.38 ");
    EXPECT_EQ(shown<SynthParameter>("", 0.005F), "0.00 "); // the float lies below 0.005
    EXPECT_EQ(shown<SynthParameter>("", 0.015F), "0.01 "); // likewise
    EXPECT_EQ(shown<SynthParameter>("", 0.035F), "0.04 "); // and this one above
}

TEST(PlainDisplay, KeepsTheSignOfWhatRoundsToZero) {
    EXPECT_EQ(shown<SynthParameter>("", -0.001F), "-0.00 ");
}

TEST(PlainDisplay, HasRoomForTheLargestNumber) {
    EXPECT_EQ(shown<SynthParameter>("s", kHuge), "340282346638528859811704183484516925440.00 s");
}

TEST(PlainDisplay, NamesWhatIsNotANumber) {
    EXPECT_EQ(shown<SynthParameter>("s", std::numeric_limits<float>::quiet_NaN()), "nan s");
    EXPECT_EQ(shown<SynthParameter>("s", -std::numeric_limits<float>::infinity()), "-inf s");
}

TEST(PercentDisplay, ShowsHundredthsWithNoBlankBeforeTheLabel) {
    EXPECT_EQ(shown<PercentSynthParameter>("%", 0.7F), "70%");
    EXPECT_EQ(shown<PercentSynthParameter>("%", 1.0F), "100%");
    EXPECT_EQ(shown<PercentSynthParameter>("", 0.42F), "42");
}

TEST(PercentDisplay, PadsSingleDigitsToTwoColumns) {
    EXPECT_EQ(shown<PercentSynthParameter>("%", 0.05F), " 5%");
    EXPECT_EQ(shown<PercentSynthParameter>("%", 0.0F), " 0%");
    EXPECT_EQ(shown<PercentSynthParameter>("%", 0.0949F), " 9%");
    EXPECT_EQ(shown<PercentSynthParameter>("%", 0.0951F), "10%");
    EXPECT_EQ(shown<PercentSynthParameter>("%", -0.05F), "-5%");
}

TEST(PercentDisplay, RoundsTiesToEven) {
    EXPECT_EQ(shown<PercentSynthParameter>("%", 0.125F), "12%");
    EXPECT_EQ(shown<PercentSynthParameter>("%", 0.375F), "38%");
    EXPECT_EQ(shown<PercentSynthParameter>("%", 0.625F), "62%");
}

TEST(PercentDisplay, MultipliesInDoublePrecision) {
    // The float nearest 0.175 lies below it and the one nearest 0.165 above; times 100 in single
    // precision both would be ties.
    static_assert(0.175F * 100.0F == 17.5F && 0.165F * 100.0F == 16.5F);
    EXPECT_EQ(shown<PercentSynthParameter>("%", 0.175F), "17%");
    EXPECT_EQ(shown<PercentSynthParameter>("%", 0.165F), "17%");
}

TEST(PercentDisplay, HasRoomForTheLargestNumber) {
    EXPECT_EQ(shown<PercentSynthParameter>("%", kHuge).size(), 42U);
}

TEST(WholeNumberDisplay, ShowsNoDecimalsABlankAndTheLabel) {
    EXPECT_EQ(shown<IntegerSynthParameter>("osc", 20.0F), "20 osc");
    EXPECT_EQ(shown<IntegerSynthParameter>("osc", -3.0F), "-3 osc");
    EXPECT_EQ(shown<IntegerSynthParameter>("", 0.0F), "0 ");
}

TEST(WholeNumberDisplay, CutsOffTheFractionOfADefaultThatHasOne) {
    EXPECT_EQ(shown<IntegerSynthParameter>("bits", 2.9F), "2 bits");
    EXPECT_EQ(shown<IntegerSynthParameter>("bits", -2.9F), "-2 bits");
}

TEST(WaveDisplay, NamesTheWaveformWithoutTheLabel) {
    EXPECT_EQ(shown<WaveSynthParameter>("", 0.0F), "Sine");
    EXPECT_EQ(shown<WaveSynthParameter>("label", 1.0F), "Square");
    EXPECT_EQ(shown<WaveSynthParameter>("", 2.0F), "Saw");
    EXPECT_EQ(shown<WaveSynthParameter>("", 3.0F), "Poly");
    EXPECT_EQ(shown<WaveSynthParameter>("", 4.0F), "Son of Poly");
}

TEST(WaveDisplay, IsEmptyOutsideTheFiveWaveforms) {
    EXPECT_EQ(shown<WaveSynthParameter>("label", -1.0F), "");
    EXPECT_EQ(shown<WaveSynthParameter>("label", 5.0F), "");
    EXPECT_EQ(shown<WaveSynthParameter>("label", 1e20F), "");
    EXPECT_EQ(shown<WaveSynthParameter>("label", std::numeric_limits<float>::quiet_NaN()), "");
}

TEST(BeatsDisplay, ShowsPowersOfTwo) {
    EXPECT_EQ(shown<BeatsSynthParameter>("beats", 0.0F), "1 beats");
    EXPECT_EQ(shown<BeatsSynthParameter>("beats", 1.0F), "2 beats");
    EXPECT_EQ(shown<BeatsSynthParameter>("beats", 5.0F), "32 beats");
    EXPECT_EQ(shown<BeatsSynthParameter>("", 3.0F), "8 ");
}

TEST(BeatsDisplay, ShowsNegativeExponentsAsFractions) {
    EXPECT_EQ(shown<BeatsSynthParameter>("beats", -1.0F), "1/2 beats");
    EXPECT_EQ(shown<BeatsSynthParameter>("beats", -2.0F), "1/4 beats");
    EXPECT_EQ(shown<BeatsSynthParameter>("beats", -5.0F), "1/32 beats");
}

TEST(BeatsDisplay, RaisesInSinglePrecisionSoThatLongLengthsOverflow) {
    EXPECT_EQ(shown<BeatsSynthParameter>("beats", 127.0F),
              "170141183460469231731687303715884105728 beats");
    EXPECT_EQ(shown<BeatsSynthParameter>("beats", 128.0F), "inf beats");
    EXPECT_EQ(shown<BeatsSynthParameter>("beats", 1000.0F), "inf beats");
}

TEST(Display, FollowsTheValueAndNotTheDefault) {
    IntegerSynthParameter modes("Max Modes", "osc", 0.0F, 100.0F, 20.0F);
    modes.setValue(7.9F);
    EXPECT_EQ(modes.getDisplay(), "7 osc");
}

} // namespace
} // namespace zelvatone
