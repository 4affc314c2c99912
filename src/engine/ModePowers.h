// The powers that mode targets are made of.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>

namespace zelvatone {

// Extra mode j lies below the note by the ratio primes[j] ^ detune. All primes below 100, far more
// than "Modes" can select.
constexpr std::array<std::int32_t, 25> kPrimes = {
    2, 3, 5, 7, 11, 13, 17, 19, 23, 29, 31, 37, 41, 43, 47, 53, 59, 61, 67, 71, 73, 79, 83, 89, 97};

inline float powerAsFloat(double base, float exponent) {
    return static_cast<float>(std::pow(base, static_cast<double>(exponent)));
}

// The ratio of extra mode `j`, 0..24.
inline float extraRatio(std::int32_t j, float detune) {
    return powerAsFloat(kPrimes[static_cast<std::size_t>(j)], detune);
}

} // namespace zelvatone
