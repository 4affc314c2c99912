// The pictures that the library carries, as PNG files.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace zelvatone {

// The bytes of the picture `name`, "animknob.png" and so on, whatever the case of its letters.
// Empty without such a picture. Valid as long as the library is loaded.
std::span<const std::uint8_t> embeddedPicture(std::string_view name);
// The same with twice the pixels along each edge. A library that never calls this carries none of
// them.
std::span<const std::uint8_t> embeddedDoublePicture(std::string_view name);

} // namespace zelvatone
