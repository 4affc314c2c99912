#include "tests/kernel/Scenario.h"

#include <gtest/gtest.h>

namespace {

// Twenty seeds a test, from twenty times the number at the end of its name on; the seed of a
// scenario with a difference is printed.
class ManyScenarios : public testing::TestWithParam<int> {};

TEST_P(ManyScenarios, AreTheSameToTheLastBitInAllRenderers) {
    constexpr int kSeeds = 20;
    for (int seed = kSeeds * GetParam(); seed < kSeeds * (GetParam() + 1); ++seed) {
        const std::string difference = Scenario(static_cast<std::uint64_t>(seed)).play(4'000'000);
        EXPECT_EQ(difference, "") << "seed " << seed;
    }
}

INSTANTIATE_TEST_SUITE_P(Twenty, ManyScenarios, testing::Range(0, 50));

} // namespace
