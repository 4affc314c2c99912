// Levels as people give them.
#pragma once

#include <cmath>

namespace zelvatone {

constexpr double kLargestGain = 120.0; // dB up or down, the range of 20 bits

// The factor on samples that makes them so many decibels louder.
inline float gainFactor(double decibels) {
    return static_cast<float>(std::pow(10.0, decibels / 20.0));
}

} // namespace zelvatone
