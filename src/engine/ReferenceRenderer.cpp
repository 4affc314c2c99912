#include "engine/ReferenceRenderer.h"

#include "engine/ADSR.h"
#include "engine/ModeVoice.h"
#include "engine/OutputScale.h"

namespace zelvatone {

float renderReferenceSample(const VoiceSlots& slots, double dt) {
    float sum = 0.0F;
    float weight = 0.0F;
    for (std::int32_t slot = 0; slot < slots.count(); ++slot) {
        slots.freeIfFinished(slot);
        if (slots.notes[slot] == kFreeSlot) {
            continue;
        }
        const float e = slots.envelopes[slot]->tick(dt);
        const float s = slots.voices[slot]->tick();
        sum += s * e;
        weight += e;
    }
    const float gain = weight > kFullWeight ? 1.0F / weight : kGainBelowFullWeight;
    return static_cast<float>(gain * sum * kOutputGain);
}

} // namespace zelvatone
