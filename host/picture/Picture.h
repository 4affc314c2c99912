// A picture of up to 256 colours.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace zelvatone {

// Red, green, blue, opacity; each 0 to 255, colours as screens take them (sRGB).
using Colour = std::array<std::uint8_t, 4>;

struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels; // indices of colours, row by row from the top
    std::vector<Colour> colours;
};

// Writes a PNG file; the same picture gives the same bytes. Throws InputError when the file cannot
// be written.
void writePng(const std::filesystem::path& path, const Picture& picture);

} // namespace zelvatone
