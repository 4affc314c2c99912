// The checksums in the frames of FLAC files.
#pragma once

#include <cstdint>
#include <span>

namespace zelvatone {

// Of a frame's header: the polynomial x^8 + x^2 + x + 1.
std::uint8_t flacHeaderSum(std::span<const char> bytes);

// Of a whole frame: the polynomial x^16 + x^15 + x^2 + 1.
std::uint16_t flacFrameSum(std::span<const char> bytes);

} // namespace zelvatone
