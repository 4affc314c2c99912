#include "dataset/SoundLevel.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace zelvatone {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

// In every lane of the processor's vectors, and in what does not fill one.
TEST(SoundLevel, PeakIsTheLargestMagnitudeWhereverItIs) {
    for (std::size_t length = 1; length <= 11; ++length) {
        for (std::size_t at = 0; at < length; ++at) {
            for (const float peak : {0.75F, -0.75F}) {
                std::vector<float> samples(length, 0.5F);
                samples[at] = peak;
                EXPECT_EQ(measureLevel(samples).peak, 0.75F) << length << ' ' << at;
            }
        }
    }
}

TEST(SoundLevel, NothingHasNoPeak) {
    std::vector<float> samples;
    EXPECT_EQ(measureLevel(samples).peak, 0.0F);
    samples = {-0.0F, 0.0F};
    EXPECT_EQ(measureLevel(samples).peak, 0.0F);
}

TEST(SoundLevel, SamplesBeyondFullScaleAreCounted) {
    std::vector<float> samples{1.0F, -1.0F, 1.0000001F, -3.0F, 0.5F};
    const SoundLevel level = measureLevel(samples);
    EXPECT_EQ(level.clippedSamples, 2);
    EXPECT_EQ(level.peak, 3.0F);
    EXPECT_EQ(level.brokenSamples, 0);
}

TEST(SoundLevel, BrokenSamplesBecomeSilenceAndAreCounted) {
    for (const float broken : {kNan, -kNan, kInfinity, -kInfinity}) {
        std::vector<float> samples{0.25F, broken, -0.5F, broken, 0.0F};
        const SoundLevel level = measureLevel(samples);
        EXPECT_EQ(level.brokenSamples, 2);
        EXPECT_EQ(level.peak, 0.5F);
        EXPECT_EQ(level.clippedSamples, 0);
        EXPECT_EQ(samples, (std::vector<float>{0.25F, 0.0F, -0.5F, 0.0F, 0.0F}));
    }
}

} // namespace
} // namespace zelvatone
