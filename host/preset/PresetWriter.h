// Writes VST 2 preset files.
#pragma once

#include "host/preset/Preset.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace zelvatone {

// Names are cut to the 27 bytes that the layout has for them. Banks are of version 2.
std::vector<std::uint8_t> presetBytes(const Preset& preset);

// The file is there whole or not at all. Throws InputError when it cannot be written.
void writePreset(const std::filesystem::path& path, const Preset& preset);

} // namespace zelvatone
