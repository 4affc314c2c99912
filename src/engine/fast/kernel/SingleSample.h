// The steps of one sample, vector by vector, for banks in any state within the fast range.
#pragma once

#include "engine/fast/kernel/Columns.h"

namespace zelvatone {
namespace {

float sumOnce(const ModeBank& bank, const BlockConstants& constants, KernelScratch& scratch) {
    for (std::int32_t i = 0; i < bank.count; i += kLanes) {
        const Ints active = lanesBelow(bank.count, i);
        const Floats phase = loadActive(active, bank.phase + i);
        store(scratch.index + i, truncate(constants.entriesPerRadian * phase));
    }
    float sum = 0.0F;
    for (std::int32_t i = 0; i < bank.count; ++i) {
        sum += bank.amp[i] * constants.cycle[scratch.index[i]];
    }
    return sum;
}

ZELVATONE_INLINE void glideArray(std::int32_t count, float* values, const float* targets,
                                 float* steps) {
    for (std::int32_t i = 0; i < count; i += kLanes) {
        const Ints active = lanesBelow(count, i);
        Floats value = load(values + i);
        Floats step = load(steps + i);
        glideOnce(value, load(targets + i), step);
        storeActive(active, values + i, value);
        storeActive(active, steps + i, step);
    }
}

void glideOnce(const ModeBank& bank) {
    glideArray(bank.count, bank.amp, bank.targetAmp, bank.ampStep);
    glideArray(bank.count, bank.freq, bank.targetFreq, bank.freqStep);
}

// Wraps phases of any size, those that vectors cannot wrap one by one.
ZELVATONE_INLINE Floats wrapAnything(Floats phase) {
    const Ints phaseTooFast = absolute(phase) > kWidestPhase;
    if (anyLane(phaseTooFast) == 0) {
        return wrapAny(phase);
    }
    float phases[kLanes];
    store(phases, phase);
    for (float& p : phases) {
        p = static_cast<float>(__builtin_fmod(static_cast<double>(p), static_cast<double>(kTurn)));
    }
    return select(phaseTooFast, load(phases), wrapAny(phase));
}

void advanceOnce(const ModeBank& bank, const BlockConstants& constants) {
    for (std::int32_t i = 0; i < bank.count; i += kLanes) {
        const Ints active = lanesBelow(bank.count, i);
        const Floats freq = loadActive(active, bank.freq + i);
        const Floats phase = loadActive(active, bank.phase + i);
        storeActive(active, bank.phase + i, wrapAnything(freq * constants.radiansPerHz + phase));

        const Ints still = load(bank.freqStep + i) == 0.0F;
        const Ints drops = still | -std::int32_t{constants.dropsGliding};
        const Floats dropped = freq * load(constants.dropFactors + i);
        storeActive(active, bank.freq + i, select(drops, dropped, freq));
    }
}

} // namespace
} // namespace zelvatone
