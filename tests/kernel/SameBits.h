// When two values of the sound are the same.
#pragma once

#include <bit>
#include <cmath>
#include <concepts>
#include <cstdint>

// All bits count, the sign of a zero too. Only one NaN is as good as another: of two that are
// added, compilers and processors keep either.
inline bool sameBits(float a, float b) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}

inline bool sameBits(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

template<std::integral Integer>
bool sameBits(Integer a, Integer b) {
    return a == b;
}
