// The steps of one sample, vector by vector, for banks in any state within the fast range.
#pragma once

#include "engine/fast/kernel/Columns.h"

namespace zelvatone {
namespace {

// Reports the modes from `first` on whose look-ups failed.
[[gnu::noinline]] void reportOnce(const Segment& segment, std::int32_t first, Ints failed,
                                  Floats phase, FailedLookups& failures) {
    Column column;
    const std::int32_t left = segment.modes.count - first;
    putModes(column, 0,
             {.segment = &segment, .first = first, .count = left < kLanes ? left : kLanes});
    reportLanes(column, failed, 0, phase, failures);
}

float sumOnce(const Segment& segment, const BlockConstants& constants, KernelScratch& scratch) {
    const ModeBank& bank = segment.modes;
    for (std::int32_t i = 0; i < bank.count; i += kLanes) {
        const Ints active = lanesBelow(bank.count, i);
        const Floats phase = keep(active, load(bank.phase + i));
        const Entries entries = findEntries(phase, constants);
        store(scratch.index + i, entries.index);
        if (anySet(active & ~entries.found)) {
            reportOnce(segment, i, ~entries.found, phase, scratch.failures);
        }
    }
    float sum = 0.0F;
    for (std::int32_t i = 0; i < bank.count; ++i) {
        sum += bank.amp[i] * constants.cycle[scratch.index[i]];
    }
    return sum;
}

ZELVATONE_INLINE void storeLanes(Ints lanes, float* to, Floats v) {
    store(to, select(lanes, v, load(to)));
}

ZELVATONE_INLINE void glideArray(std::int32_t count, float* values, const float* targets,
                                 float* steps) {
    for (std::int32_t i = 0; i < count; i += kLanes) {
        const Ints active = lanesBelow(count, i);
        Floats value = load(values + i);
        Floats step = load(steps + i);
        glideOnce(value, load(targets + i), step);
        storeLanes(active, values + i, value);
        storeLanes(active, steps + i, step);
    }
}

void glideOnce(const ModeBank& bank) {
    glideArray(bank.count, bank.amp, bank.targetAmp, bank.ampStep);
    glideArray(bank.count, bank.freq, bank.targetFreq, bank.freqStep);
}

void advanceOnce(const Segment& segment, const BlockConstants& constants) {
    const ModeBank& bank = segment.modes;
    const float radiansPerHz = constants.phaseAdvance->radiansPerHz[segment.sample];
    TurnReducer reducer;
    reducer.reset();
    for (std::int32_t i = 0; i < bank.count; i += kLanes) {
        const Ints active = lanesBelow(bank.count, i);
        const Floats freq = keep(active, load(bank.freq + i));
        const Floats phase = keep(active, load(bank.phase + i));
        const Floats turned = freq * radiansPerHz + phase;
        storeLanes(active, bank.phase + i, wrapExact(turned, reducer));

        const Floats dropped = freq * load(constants.dropFactors + i);
        const Ints drops = dropsNow(load(bank.freqStep + i), constants);
        storeLanes(active, bank.freq + i, select(drops, dropped, freq));
    }
}

} // namespace
} // namespace zelvatone
