#include "host/audio/LoudnessMeter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace zelvatone {
namespace {

constexpr double kNone = -std::numeric_limits<double>::infinity();

std::vector<float> sine(double decibels, double seconds) {
    std::vector<float> samples(static_cast<std::size_t>(seconds * 48000.0));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double phase = 2.0 * std::numbers::pi * 997.0 * static_cast<double>(i) / 48000.0;
        samples[i] = static_cast<float>(std::pow(10.0, decibels / 20.0) * std::sin(phase));
    }
    return samples;
}

// The recommendation's own calibration: a full-scale sine of 997 Hz in one front channel reads
// -3.01 LKFS, for its mean square is a half and the weighting's gain there is the constant's.
TEST(LoudnessMeter, ReadsTheCalibrationTone) {
    for (const double decibels : {0.0, -20.0, -23.0}) {
        LoudnessMeter meter(1, 48000);
        meter.measure(sine(decibels, 3.0));
        EXPECT_NEAR(meter.integrated(), decibels - 3.01, 0.05) << decibels;
    }
}

// Two equal channels have twice the power of one.
TEST(LoudnessMeter, AddsThePowersOfTwoChannels) {
    const std::vector<float> mono = sine(-20.0, 2.0);
    std::vector<float> stereo;
    for (const float sample : mono) {
        stereo.insert(stereo.end(), 2, sample);
    }
    LoudnessMeter meter(2, 48000);
    meter.measure(stereo);
    EXPECT_NEAR(meter.integrated(), -20.0, 0.05);
}

TEST(LoudnessMeter, LeavesSilentPartsOut) {
    LoudnessMeter meter(1, 48000);
    meter.measure(sine(-20.0, 4.0));
    meter.measure(std::vector<float>(48000 * 8));
    EXPECT_NEAR(meter.integrated(), -23.01, 0.2); // blocks across the end still count
}

TEST(LoudnessMeter, FindsNoLoudnessInSilenceOrInLessThanOneBlock) {
    LoudnessMeter silence(1, 48000);
    silence.measure(std::vector<float>(48000));
    EXPECT_EQ(silence.integrated(), kNone);
    LoudnessMeter moment(1, 48000);
    moment.measure(sine(0.0, 0.39));
    EXPECT_EQ(moment.integrated(), kNone);
}

} // namespace
} // namespace zelvatone
