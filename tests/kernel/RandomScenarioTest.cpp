#include "tests/kernel/Scenario.h"

#include <gtest/gtest.h>

namespace {

// The number at the end of the test's name is the seed: run that one test to see its scenario
// again.
class RandomScenario : public testing::TestWithParam<int> {};

TEST_P(RandomScenario, IsTheSameToTheLastBitInAllRenderers) {
    const std::string difference = Scenario(static_cast<std::uint64_t>(GetParam())).play(1'500'000);
    EXPECT_EQ(difference, "");
}

INSTANTIATE_TEST_SUITE_P(Seed, RandomScenario, testing::Range(0, 100));

} // namespace
