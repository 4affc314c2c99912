// From the current program's parameters to the settings that voices and envelopes read.
#pragma once

#include "engine/VoiceSettings.h"
#include "params/SynthParameter.h"

#include <cstdint>
#include <vector>

namespace zelvatone {

using ParameterList = std::vector<SynthParameter*>;

// Each is called once a block, on the audio thread, with a list of all 23 parameters in index
// order; a shorter list ends the process. Values are read in units.

// Fills all of `settings` that parameters decide. Rebuilds the wave table where "Wave" or "Crush"
// changed, here and nowhere else.
void readVoiceSettings(const ParameterList& parameters, VoiceSettings& settings);

void readEnvelopeSettings(const ParameterList& parameters, EnvelopeSettings& settings);

// Which coefficients "Reserved" selects for the shaper.
std::int32_t readShaperSet(const ParameterList& parameters);

} // namespace zelvatone
