// The voices of a run.
#pragma once

#include "engine/ADSR.h"
#include "engine/ModeVoice.h"
#include "engine/VoiceSlots.h"
#include "engine/fast/VoiceRun.h"

#include <array>
#include <cstdint>
#include <span>

namespace zelvatone {

// A slot that sounds in the run.
struct ActiveVoice {
    // What is to be rendered of it; its samples lie where they are in the run.
    VoiceTask task() { return {.voice = *voice, .slot = slot, .out = samples}; }

    std::int32_t slot;
    ModeVoice* voice;
    ADSR* envelope;
    // Samples of the run: where the voice begins to sound, and up to where its levels are known. In
    // the end that is the end of the run or of the note's fade.
    std::int32_t first, end;
    bool isInRange; // of the fast renderer, for the whole run
    bool changes;   // whether modes may come or go in this run
    // The stretch that is rendered next, without samples when the voice is rendered, and what its
    // bank does in it.
    VoiceStretch stretch;
    BankTraits traits;
    // By sample of the run. An envelope is written in whole runs from any sample on.
    alignas(64) float samples[kVoiceBuffer];
    alignas(64) float levels[2 * kRunSamples];
};

// Audio thread.
class ActiveVoices {
public:
    static constexpr std::int32_t kSlots = 32;

    // Begins a run with the `slots` that are not free, after freeing those whose note has faded.
    void collect(const VoiceSlots& slots);
    // Returns the voice of `slot`. If it is not among those of the run, it joins them at `sample`.
    ActiveVoice& join(const VoiceSlots& slots, std::int32_t slot, std::int32_t sample);

    std::int32_t count() const { return count_; }
    // In slot order.
    ActiveVoice& operator[](std::int32_t i) { return voices_[order_[i]]; }
    const ActiveVoice& operator[](std::int32_t i) const { return voices_[order_[i]]; }

private:
    void enter(const VoiceSlots& slots, std::int32_t slot, std::int32_t sample);

    std::int32_t count_ = 0;
    std::array<std::int32_t, kSlots> order_{}; // slots
    std::array<ActiveVoice, kSlots> voices_{}; // by slot
};

} // namespace zelvatone
