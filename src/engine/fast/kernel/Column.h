// One vector of modes of one voice.
#pragma once

#include "engine/fast/ModeKernel.h"
#include "engine/fast/kernel/Lanes.h"

namespace zelvatone {
namespace {

// The arrays from the column's first mode on.
struct Column {
    ModeBank modes;         // `count`: active lanes, from the first on
    std::int32_t first;     // number of the first mode
    const Segment* segment; // that it belongs to
    std::int32_t* index;    // both receive kLanes values a sample
    float* amp;
};

Column makeColumn(const Segment& segment, std::int32_t first) {
    const ModeBank& bank = segment.modes;
    const std::int32_t left = bank.count - first;
    return {.modes = {.amp = bank.amp + first,
                      .freq = bank.freq + first,
                      .phase = bank.phase + first,
                      .ampStep = bank.ampStep + first,
                      .freqStep = bank.freqStep + first,
                      .targetAmp = bank.targetAmp + first,
                      .targetFreq = bank.targetFreq + first,
                      .reportedModes = bank.reportedModes,
                      .count = left < kLanes ? left : kLanes},
            .first = first,
            .segment = &segment,
            .index = nullptr,
            .amp = nullptr};
}

// The values of a column, with lanes that are not active at zero.
ZELVATONE_INLINE Floats loadActive(Ints active, const float* from) {
    return keep(active, load(from));
}

ZELVATONE_INLINE void storeActive(Ints active, float* to, Floats v) {
    store(to, select(active, v, load(to)));
}

} // namespace
} // namespace zelvatone
