// Float to integer, with one result for every input on every platform.
#pragma once

#include <cstdint>
#include <limits>

namespace zelvatone {

// `value` with its fraction cut off. What does not fit, NaN included, becomes the lowest int32:
// the result of the x86-64 conversion instruction, where C++ itself leaves the result open.
constexpr std::int32_t truncateToInt32(double value) {
    // Just outside the range on either side; both are exact as doubles, and NaN fails both tests.
    constexpr double kTooLow = -2147483649.0;
    constexpr double kTooHigh = 2147483648.0;
    return value > kTooLow && value < kTooHigh ? static_cast<std::int32_t>(value)
                                               : std::numeric_limits<std::int32_t>::min();
}

// `value` to the nearest integer, halves away from zero, by way of half a unit and truncation.
constexpr std::int32_t roundToInt32(float value) {
    const double half = value >= 0.0F ? 0.5 : -0.5;
    return truncateToInt32(static_cast<double>(value) + half);
}

} // namespace zelvatone
