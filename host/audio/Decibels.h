// Levels as people give them.
#pragma once

#include <cmath>
#include <optional>
#include <string_view>

namespace zelvatone {

constexpr double kLargestGain = 120.0; // dB up or down, the range of 20 bits

// The factor on samples that makes them so many decibels louder.
inline float gainFactor(double decibels) {
    return static_cast<float>(std::pow(10.0, decibels / 20.0));
}

// The decibels that all of `text` spells: "-6", "+3", "-3dB" or "3 dB", in any case. None for
// anything else and for what lies beyond kLargestGain.
std::optional<double> decibelsIn(std::string_view text);

} // namespace zelvatone
