// How many modes a voice can have.
#pragma once

#include <cstdint>

namespace zelvatone {

// The largest number of modes that any setting can select: "Min Modes", "Max Modes" and "Mode Init"
// all end there.
constexpr std::int32_t kMaxModeCount = 100;

} // namespace zelvatone
