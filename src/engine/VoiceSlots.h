// The voice slots, as the renderers see them.
#pragma once

#include "engine/ADSR.h"

#include <cstdint>
#include <memory>
#include <span>

namespace zelvatone {

class ModeVoice;

// States of a slot besides the number of the note that holds it.
constexpr std::int32_t kFreeSlot = -1;
constexpr std::int32_t kReleasedSlot = -2; // fading out

// Views of the engine's arrays, one element a slot. The engine owns the slots and outlives the
// views.
struct VoiceSlots {
    std::int32_t count() const { return static_cast<std::int32_t>(notes.size()); }

    // Frees `slot` if its note has faded. For the beginning of a sample, after its events.
    void freeIfFinished(std::int32_t slot) const {
        if (notes[slot] != kFreeSlot && !envelopes[slot]->isActive()) {
            notes[slot] = kFreeSlot;
        }
    }

    std::span<std::int32_t> notes; // kFreeSlot, kReleasedSlot or a note
    std::span<const std::unique_ptr<ModeVoice>> voices;
    std::span<const std::unique_ptr<ADSR>> envelopes;
};

} // namespace zelvatone
