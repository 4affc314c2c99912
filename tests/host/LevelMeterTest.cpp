#include "host/audio/LevelMeter.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace zelvatone {
namespace {

TEST(LevelMeter, PeakIsTheLargestMagnitudeOfAllBlocks) {
    LevelMeter meter;
    const std::vector<float> first{0.1F, -0.5F};
    const std::vector<float> second{0.25F};
    meter.measure(first);
    meter.measure(second);
    EXPECT_FLOAT_EQ(meter.peak(), 0.5F);
    EXPECT_NEAR(meter.peakDecibels(), -6.0206, 1e-4);
}

TEST(LevelMeter, PeakOfSilenceIsInfinitelyFarBelowFullScale) {
    EXPECT_EQ(LevelMeter().peakDecibels(), -std::numeric_limits<double>::infinity());
}

} // namespace
} // namespace zelvatone
