#include "engine/fast/ActiveVoices.h"

#include <algorithm>

namespace zelvatone {

void ActiveVoices::collect(const VoiceSlots& slots) {
    count_ = 0;
    for (std::int32_t slot = 0; slot < kSlots; ++slot) {
        slots.freeIfFinished(slot);
        if (slots.notes[slot] != kFreeSlot) {
            order_[count_++] = slot;
            enter(slots, slot, 0);
        }
    }
}

ActiveVoice& ActiveVoices::join(const VoiceSlots& slots, std::int32_t slot, std::int32_t sample) {
    std::int32_t* const end = order_.data() + count_;
    std::int32_t* const place = std::lower_bound(order_.data(), end, slot);
    if (place == end || *place != slot) {
        std::copy_backward(place, end, end + 1);
        *place = slot;
        ++count_;
        enter(slots, slot, sample);
    }
    return voices_[slot];
}

void ActiveVoices::enter(const VoiceSlots& slots, std::int32_t slot, std::int32_t sample) {
    ActiveVoice& active = voices_[slot];
    active.slot = slot;
    active.voice = slots.voices[slot].get();
    active.envelope = slots.envelopes[slot].get();
    active.first = sample;
    active.end = sample;
}

} // namespace zelvatone
