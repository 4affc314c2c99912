// VST 2 preset files as bytes.
#pragma once

#include "host/preset/Preset.h"

#include <cstdint>
#include <vector>

namespace zelvatone {

// Names are cut to the 27 bytes that the layout has for them. Banks are of version 2.
std::vector<std::uint8_t> presetBytes(const Preset& preset);

} // namespace zelvatone
