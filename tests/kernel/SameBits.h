// When two values of the sound are the same.
#pragma once

#include <bit>
#include <cmath>
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

inline bool sameBits(std::int32_t a, std::int32_t b) {
    return a == b;
}

inline bool sameBits(std::uint32_t a, std::uint32_t b) {
    return a == b;
}

inline bool sameBits(std::uint64_t a, std::uint64_t b) {
    return a == b;
}
