// What a preset file holds: one program, or a bank of all that a plug-in has.
#pragma once

#include "vst2/aeffect.h"

#include <string>
#include <vector>

namespace zelvatone {

struct PresetProgram {
    std::string name;          // the plug-in's bytes, whatever their encoding
    std::vector<float> values; // normalised, by parameter index
};

struct Preset {
    bool isBank = false;
    VstInt32 pluginId = 0;
    VstInt32 pluginVersion = 0;
    std::vector<PresetProgram> programs; // just one unless it is a bank
    int currentProgram = 0;              // of a bank
};

} // namespace zelvatone
