// Which parameter each controller of a keyboard moves.
#pragma once

#include <array>
#include <cstdint>

namespace zelvatone {

inline constexpr int kControllers = 128;

// By the controller's number: a parameter's index; below 0 for none.
using ControllerMap = std::array<std::int16_t, kControllers>;

inline ControllerMap noControllers() {
    ControllerMap map{};
    map.fill(-1);
    return map;
}

// `value` from 0 to 127, normalised.
inline float controllerShare(std::uint8_t value) {
    return static_cast<float>(value) / 127.0F;
}

} // namespace zelvatone
