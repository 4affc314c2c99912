// The renderer that defines the sound: slot after slot, sample by sample.
#pragma once

#include "engine/VoiceSlots.h"

namespace zelvatone {

// Returns the next sample of all slots together and moves them on by it; `dt` is its length in
// seconds. Frees the slots whose note has faded. Audio thread.
float renderReferenceSample(const VoiceSlots& slots, double dt);

} // namespace zelvatone
