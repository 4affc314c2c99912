// The pictures that the library carries, as PNG files.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace zelvatone {

// The bytes of the picture `name`, "animknob.png" and so on, whatever the case of its letters.
// Empty if there is none. They last as long as the library.
std::span<const std::uint8_t> embeddedPicture(std::string_view name);

} // namespace zelvatone
