// Float to integer: one result for every input, on every platform.
#include "params/Truncation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace zelvatone {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(Truncation, CutsTowardsZero) {
    EXPECT_EQ(truncateToInt32(2.999), 2);
    EXPECT_EQ(truncateToInt32(-2.999), -2);
    EXPECT_EQ(truncateToInt32(-0.5), 0);
}

TEST(Truncation, ReachesBothEndsOfTheIntegers) {
    EXPECT_EQ(truncateToInt32(2147483647.9), INT32_MAX);
    EXPECT_EQ(truncateToInt32(-2147483648.9), INT32_MIN);
}

TEST(Truncation, GivesTheLowestIntegerForWhatDoesNotFit) {
    EXPECT_EQ(truncateToInt32(2147483648.0), INT32_MIN);
    EXPECT_EQ(truncateToInt32(-2147483649.0), INT32_MIN);
    EXPECT_EQ(truncateToInt32(1e300), INT32_MIN);
    EXPECT_EQ(truncateToInt32(-1e300), INT32_MIN);
    EXPECT_EQ(truncateToInt32(std::numeric_limits<double>::infinity()), INT32_MIN);
    EXPECT_EQ(truncateToInt32(std::numeric_limits<double>::quiet_NaN()), INT32_MIN);
}

TEST(Rounding, TakesHalvesAwayFromZero) {
    EXPECT_EQ(roundToInt32(0.5F), 1);
    EXPECT_EQ(roundToInt32(2.5F), 3);
    EXPECT_EQ(roundToInt32(-0.5F), -1);
    EXPECT_EQ(roundToInt32(-2.5F), -3);
}

TEST(Rounding, TakesEverythingElseToTheNearest) {
    EXPECT_EQ(roundToInt32(2.4999998F), 2);
    EXPECT_EQ(roundToInt32(-2.4999998F), -2);
    EXPECT_EQ(roundToInt32(-0.0F), 0);
}

TEST(Rounding, AddsTheHalfInDoublePrecision) {
    // In single precision 0.5 more than the float below one half is 1.
    EXPECT_EQ(roundToInt32(std::nextafter(0.5F, 0.0F)), 0);
    EXPECT_EQ(roundToInt32(std::nextafter(-0.5F, 0.0F)), 0);
    EXPECT_EQ(roundToInt32(8388609.0F), 8388609); // half a unit more would be a tie there
}

TEST(Rounding, GivesTheLowestIntegerForWhatDoesNotFit) {
    EXPECT_EQ(roundToInt32(3e9F), INT32_MIN);
    EXPECT_EQ(roundToInt32(-3e9F), INT32_MIN);
    EXPECT_EQ(roundToInt32(kInfinity), INT32_MIN);
    EXPECT_EQ(roundToInt32(kNan), INT32_MIN);
}

} // namespace
} // namespace zelvatone
