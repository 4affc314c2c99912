// The input range: values for which the fast renderer is exact.
//
// Vectors take the reference renderer's decisions in another order and by other comparisons, which
// is the same only for numbers. And a look-up that fails prints a line, for which all voices must
// be at the same sample. Outside the input range values are not numbers or far too large; its
// limits lie far beyond what knobs and notes can set, and values within them cannot grow out of a
// float's range in one run.
#pragma once

#include "engine/ADSR.h"
#include "engine/ModeVoice.h"
#include "engine/VoiceSettings.h"

namespace zelvatone {

// Audio thread, all of them.
bool isInFastRange(const VoiceSettings& settings);
// The pitch bend alone, which changes within a block.
bool isBendInFastRange(double ratio);
bool isInFastRange(const EnvelopeSettings& settings);
// The arrays of the modes are looked at by the kernel.
bool isInFastRange(const ModeVoice& voice);
bool isInFastRange(const ADSR& envelope);

} // namespace zelvatone
