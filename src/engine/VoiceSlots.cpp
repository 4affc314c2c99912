#include "engine/VoiceSlots.h"

#include "engine/ADSR.h"
#include "engine/ModeVoice.h"

namespace zelvatone {

void VoiceSlots::freeFinishedSlots() const {
    for (std::int32_t slot = 0; slot < count(); ++slot) {
        if (notes[slot] != kFreeSlot && !envelopes[slot]->isActive()) {
            notes[slot] = kFreeSlot;
        }
    }
}

} // namespace zelvatone
