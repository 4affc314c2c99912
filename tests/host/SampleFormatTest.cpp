#include "host/audio/SampleFormat.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;

struct Quantised {
    std::vector<int> numbers; // moved down from the upper bits
    std::int64_t clipped;
};

Quantised quantised(const std::vector<float>& samples, int bits) {
    std::vector<std::int32_t> numbers(samples.size());
    const auto clipped = quantise(samples, bits, numbers);
    std::vector<int> low;
    low.reserve(numbers.size());
    for (const std::int32_t number : numbers) {
        low.push_back(number / (1 << (32 - bits)));
    }
    return {low, clipped};
}

TEST(SampleFormat, ScalesFullScaleToTheWholeRange) {
    EXPECT_THAT(quantised({0.0F, 0.5F, -0.5F, -1.0F}, 16).numbers,
                ElementsAre(0, 16384, -16384, -32768));
    EXPECT_THAT(quantised({0.5F, -1.0F}, 24).numbers, ElementsAre(4194304, -8388608));
}

TEST(SampleFormat, RoundsToTheNearestNumber) {
    EXPECT_THAT(quantised({1.4F / 32768.0F, 1.6F / 32768.0F, -1.6F / 32768.0F}, 16).numbers,
                ElementsAre(1, 2, -2));
}

TEST(SampleFormat, ClipsAndCountsInsteadOfWrappingAround) {
    const auto result = quantised({1.0F, 1.5F, -1.5F, 1e30F, -1.0F, 0.999F}, 16);
    EXPECT_THAT(result.numbers, ElementsAre(32767, 32767, -32768, 32767, -32768, 32735));
    EXPECT_EQ(result.clipped, 4); // the last two fit
}

} // namespace
} // namespace zelvatone
