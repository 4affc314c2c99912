// Floating-point samples as whole numbers of a file format.
#pragma once

#include <cstdint>
#include <span>

namespace zelvatone {

// Writes each of `samples` (full scale 1.0) as a whole number of `bits` bits, 16 or 24, to the
// upper bits of the same place in `numbers`. What lies outside the format's range becomes the
// nearest number inside. Returns how many samples did.
std::int64_t quantise(std::span<const float> samples, int bits, std::span<std::int32_t> numbers);

} // namespace zelvatone
