// When the fast renderer may be trusted with the sound.
//
// Vectors take the plain rule's decisions in another order and by other comparisons, which is the
// same only for numbers. And a look-up that fails prints a line, for which all voices must be at
// the same sample. Both end where values are not numbers or out of all proportion; the limits here
// lie far outside what knobs and notes can set, and values within them cannot grow out of a float's
// range in one run.
#pragma once

#include "engine/ADSR.h"
#include "engine/ModeVoice.h"
#include "engine/VoiceSettings.h"

namespace zelvatone {

// Audio thread, all of them.
bool isCalm(const VoiceSettings& settings);
bool isCalm(const EnvelopeSettings& settings);
// The arrays of the modes are looked at by the kernel.
bool isCalm(const ModeVoice& voice);
bool isCalm(const ADSR& envelope);

} // namespace zelvatone
