#include "performance/OutputGain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace {

using zelvatone::OutputGain;

// At 1000 Hz a move takes 5 samples.
class OutputGainTest : public ::testing::Test {
protected:
    OutputGainTest() { gain_.setSampleRate(1000.0); }

    std::vector<float> ones(std::size_t count) {
        std::vector<float> samples(count, 1.0F);
        gain_.apply(samples.data(), static_cast<std::int32_t>(count));
        return samples;
    }

    OutputGain gain_;
};

TEST_F(OutputGainTest, FirstGainHoldsFromTheFirstSample) {
    gain_.moveTo(0.5F);
    EXPECT_EQ(ones(3), (std::vector<float>{0.5F, 0.5F, 0.5F}));
}

TEST_F(OutputGainTest, LaterGainsAreReachedInAStraightLine) {
    ones(1);
    gain_.moveTo(0.0F);
    EXPECT_FALSE(gain_.isSettled());
    const std::vector<float> samples = ones(7);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_NEAR(samples[i], 1.0F - 0.2F * static_cast<float>(i + 1), 1e-6F) << i;
    }
    EXPECT_EQ(samples[5], 0.0F);
    EXPECT_TRUE(gain_.isSettled());
}

TEST_F(OutputGainTest, MoveBeginsWhereTheLastOneWas) {
    ones(1);
    gain_.moveTo(0.0F);
    ones(2); // 0.6
    gain_.moveTo(1.0F);
    EXPECT_NEAR(ones(1)[0], 0.68F, 1e-6F);
}

TEST_F(OutputGainTest, GainDoesNotDependOnBlocks) {
    OutputGain whole = gain_;
    const auto play = [](OutputGain& gain, std::vector<std::size_t> blocks) {
        std::vector<float> all;
        for (const std::size_t block : blocks) {
            std::vector<float> samples(block, 0.7F);
            gain.apply(samples.data(), static_cast<std::int32_t>(block));
            all.insert(all.end(), samples.begin(), samples.end());
        }
        return all;
    };
    play(whole, {4});
    play(gain_, {4});
    whole.moveTo(0.3F);
    gain_.moveTo(0.3F);
    EXPECT_EQ(play(whole, {8}), play(gain_, {1, 2, 0, 4, 1}));
}

TEST_F(OutputGainTest, SilenceIsZeroWhateverTheSamplesAre) {
    gain_.moveTo(0.0F);
    std::vector<float> samples{-1.0F, std::numeric_limits<float>::quiet_NaN(),
                               std::numeric_limits<float>::infinity()};
    gain_.apply(samples.data(), 3);
    EXPECT_EQ(samples, std::vector<float>(3, 0.0F));
}

} // namespace
