// What neither a file nor a loudspeaker can take.
#pragma once

#include <cstdint>
#include <span>

namespace zelvatone {

// Sets every sample that is infinite or not a number (NaN) to 0. Returns how many there were.
std::int64_t silenceNonFinite(std::span<float> samples);

} // namespace zelvatone
