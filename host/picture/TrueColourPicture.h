// A picture of any colours, as screens show it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace zelvatone {

struct TrueColourPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels; // red, green, blue; row by row from the top

    bool operator==(const TrueColourPicture& other) const = default;
};

// Writes a PNG file; the same picture gives the same bytes. Throws InputError when the file cannot
// be written.
void writePng(const std::filesystem::path& path, const TrueColourPicture& picture);

} // namespace zelvatone
