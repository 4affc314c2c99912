// PNG files through libpng's simple interface.
#pragma once

#include <png.h>

#include <filesystem>

namespace zelvatone {

// Writes `image`, which says how large it is and of what kind, into a file that is there whole or
// not at all. Rows follow one another; `colours` is null for pictures without indices.
// Throws InputError when the file cannot be written.
void writePngFile(const std::filesystem::path& path, png_image& image, const void* pixels,
                  const void* colours);

} // namespace zelvatone
