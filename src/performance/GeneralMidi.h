// What General MIDI says of channels.
#pragma once

#include <cstdint>

namespace zelvatone {

inline constexpr std::uint8_t kDrumChannel = 9; // from 0: the one called 10

} // namespace zelvatone
