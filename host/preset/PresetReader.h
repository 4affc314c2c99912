// Reads VST 2 preset files. They come from anywhere, so nothing in them is believed.
#pragma once

#include "host/preset/Preset.h"

#include <cstdint>
#include <filesystem>
#include <span>

namespace zelvatone {

// Throws InputError with the file's name for a file that is missing, not a preset, of the kind
// that holds a chunk, cut short or too long, inconsistent, with a name that does not end, or with
// a value that is not a number from 0 to 1.
Preset readPreset(const std::filesystem::path& path);

// The same from memory; the error's text names no file.
Preset parsePreset(std::span<const std::uint8_t> bytes);

} // namespace zelvatone
