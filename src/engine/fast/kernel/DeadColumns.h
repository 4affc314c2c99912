// Columns of dead modes. A phase that is NaN stays NaN until the note ends, so such a mode never
// sounds again; only its frequency and its amplitude still move.
#pragma once

#include "engine/fast/kernel/Lookups.h"
#include "engine/fast/kernel/Phases.h"

namespace zelvatone {
namespace {

// Whether no lane of `column` will sound or report anything.
bool isDead(const Column& column) {
    const Ints active = lanesBelow(column.modes.count, 0);
    const Floats phase = loadActive(active, column.modes.phase);
    return anyLane((active & ~isNan(phase)) | unreportedLanes(column)) == 0;
}

// Moves the frequencies and amplitudes of `column` on, up to where nothing changes any more.
void moveDead(const Column& column, std::int32_t samples, const BlockConstants& constants) {
    const ModeBank& modes = column.modes;
    const Ints active = lanesBelow(modes.count, 0);
    const Floats targetAmp = loadActive(active, modes.targetAmp);
    Floats amp = loadActive(active, modes.amp);
    Floats ampStep = loadActive(active, modes.ampStep);
    FrequencyLanes<FrequencyMotion::kGlideAndDrop> frequencies;
    frequencies.read(active, column, constants);
    Ints changes = active;
    for (std::int32_t k = 0; k < samples && anyLane(changes) != 0; ++k) {
        const Floats lastAmp = amp;
        const Floats lastFreq = frequencies.freq;
        glideOnce(amp, targetAmp, ampStep);
        frequencies.glide();
        frequencies.drop();
        changes = (bits(amp) != bits(lastAmp)) | (bits(frequencies.freq) != bits(lastFreq));
    }
    storeActive(active, modes.amp, amp);
    storeActive(active, modes.ampStep, ampStep);
    frequencies.write(active, column);
}

} // namespace
} // namespace zelvatone
