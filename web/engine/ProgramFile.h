// Reads .fxp files of the instrument. They come from anywhere, so nothing in them is believed.
// Where the page runs there are no exceptions: errors are texts.
#pragma once

#include "host/preset/Preset.h"

#include <cstdint>
#include <span>
#include <string>

namespace zelvatone {

// By which hosts tell the plug-in's files from others'.
constexpr VstInt32 kPluginId = 61546;
constexpr VstInt32 kPluginVersion = 1;

struct ProgramFile {
    std::string error; // what is wrong; empty if nothing is
    PresetProgram program;
};

// Takes what the host's reader of presets takes, of programs for this plug-in.
ProgramFile readProgramFile(std::span<const std::uint8_t> bytes);

} // namespace zelvatone
