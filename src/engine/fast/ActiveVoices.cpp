#include "engine/fast/ActiveVoices.h"

namespace zelvatone {

void ActiveVoices::collect(const VoiceSlots& slots) {
    count_ = 0;
    for (std::int32_t slot = 0; slot < kSlots; ++slot) {
        if (slots.notes[slot] != kFreeSlot) {
            order_[count_++] = slot;
            ActiveVoice& active = voices_[slot];
            active.slot = slot;
            active.voice = slots.voices[slot].get();
            active.envelope = slots.envelopes[slot].get();
        }
    }
}

} // namespace zelvatone
