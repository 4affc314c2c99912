#include "host/audio/LevelMeter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace zelvatone {
namespace {

TEST(LevelMeter, KeepsTheLargestMagnitudeOfAllBlocks) {
    LevelMeter meter;
    std::vector<float> first{0.1F, -0.5F};
    std::vector<float> second{0.25F};
    meter.measure(first);
    meter.measure(second);
    EXPECT_FLOAT_EQ(meter.peak(), 0.5F);
    EXPECT_NEAR(meter.peakDecibels(), -6.0206, 1e-4);
}

TEST(LevelMeter, CallsSilenceInfinitelySoft) {
    EXPECT_EQ(LevelMeter().peakDecibels(), -std::numeric_limits<double>::infinity());
}

TEST(LevelMeter, SilencesAndCountsWhatIsNoNumber) {
    LevelMeter meter;
    std::vector<float> samples{std::nanf(""), 0.5F, std::numeric_limits<float>::infinity()};
    meter.measure(samples);
    EXPECT_THAT(samples, ::testing::ElementsAre(0.0F, 0.5F, 0.0F));
    EXPECT_EQ(meter.brokenSamples(), 2);
    EXPECT_FLOAT_EQ(meter.peak(), 0.5F);
}

} // namespace
} // namespace zelvatone
