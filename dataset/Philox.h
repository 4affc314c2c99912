// Random numbers without a state: a function of a counter and a key.
#pragma once

#include <array>
#include <cstdint>

namespace zelvatone {

using PhiloxBlock = std::array<std::uint32_t, 4>;
using PhiloxKey = std::array<std::uint32_t, 2>;

// Philox4x32-10 of J. Salmon, M. Moraes, R. Dror and D. Shaw, "Parallel random numbers: as easy as
// 1, 2, 3" (2011): four words that look random for each counter and key.
PhiloxBlock philox(PhiloxBlock counter, PhiloxKey key);

} // namespace zelvatone
