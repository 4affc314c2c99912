// Writes VST 2 preset files.
#pragma once

#include "host/preset/Preset.h"

#include <filesystem>

namespace zelvatone {

// The file is there whole or not at all. Throws InputError when it cannot be written.
void writePreset(const std::filesystem::path& path, const Preset& preset);

} // namespace zelvatone
