#include "tour/Loudness.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace zelvatone {
namespace {

constexpr int kRate = 44100;

// Four seconds, with the same in every channel. `turn` is where the sine begins, in turns.
std::vector<float> sine(double hz, double decibels, int channels, double turn = 0.0) {
    std::vector<float> samples;
    for (int i = 0; i < 4 * kRate; ++i) {
        const double phase = 2.0 * std::numbers::pi * (hz * i / kRate + turn);
        const auto sample = static_cast<float>(std::pow(10.0, decibels / 20.0) * std::sin(phase));
        samples.insert(samples.end(), static_cast<std::size_t>(channels), sample);
    }
    return samples;
}

// The first test signal of EBU Tech 3341: 1 kHz on both channels with its peaks at -23 dBFS has
// -23 LUFS, within 0.1.
TEST(ToneOfOneKilohertz, IsAsLoudAsItsPeak) {
    for (const double decibels : {-23.0, -33.0}) {
        EXPECT_NEAR(loudnessOf(sine(1000.0, decibels, 2), 2, kRate).lufs, decibels, 0.1);
    }
}

TEST(OneChannel, IsAsLoudAsOnBothLoudspeakers) {
    EXPECT_NEAR(loudnessOf(sine(1000.0, -23.0, 1), 1, kRate).lufs,
                loudnessOf(sine(1000.0, -23.0, 2), 2, kRate).lufs, 1e-9);
}

// At a quarter of the rate and an eighth of a turn, all samples are at 0.7071 of the peak.
TEST(Loudness, FindsPeaksBetweenSamples) {
    const Loudness loudness = loudnessOf(sine(kRate / 4.0, -6.0, 1, 0.125), 1, kRate);
    EXPECT_NEAR(loudness.truePeakDecibels, -6.0, 0.3);
}

TEST(LevellingGain, LeadsToTheLoudnessUnlessThePeakForbids) {
    EXPECT_DOUBLE_EQ(levellingGain({-13.0, -1.0}, -23.0, -1.0), -10.0);
    EXPECT_DOUBLE_EQ(levellingGain({-30.0, -20.0}, -23.0, -1.0), 7.0);
    EXPECT_DOUBLE_EQ(levellingGain({-30.0, -5.0}, -23.0, -1.0), 4.0); // to a peak of -1
}

TEST(LevellingGain, LeavesSilenceAlone) {
    const Loudness silence = loudnessOf(std::vector<float>(88200), 1, kRate);
    EXPECT_EQ(silence.lufs, -std::numeric_limits<double>::infinity());
    EXPECT_EQ(levellingGain(silence, -23.0, -1.0), 0.0);
}

} // namespace
} // namespace zelvatone
