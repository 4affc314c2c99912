// Where phases read in the wave table, for phases that may be anything, and the report of those
// that read nowhere.
#pragma once

#include "engine/fast/kernel/Column.h"

namespace zelvatone {
namespace {

// The entries of one sample, and which lanes have one.
struct Entries {
    Ints index; // the silent one for the others
    Ints found;
};

// The limit is compared with the float, not with the index: what an index becomes that does not fit
// differs between processors.
ZELVATONE_INLINE Entries findEntries(Floats phase, const BlockConstants& constants) {
    const Floats place = constants.entriesPerRadian * phase;
    const Ints found = absolute(place) < constants.indexLimit;
    return {.index = found ? truncate(place) : Ints{} + constants.silentEntry, .found = found};
}

constexpr std::int32_t kBitsPerWord = 32;

bool isReported(const ModeBank& bank, std::int32_t mode) {
    return (bank.reportedModes[mode / kBitsPerWord] >> (mode % kBitsPerWord) & 1U) != 0;
}

// The active lanes of a column whose failed look-ups have not been reported yet.
ZELVATONE_INLINE Ints unreportedLanes(const Column& column) {
    const Ints words = joinSlices([&](std::int32_t s) ZELVATONE_INLINE_LAMBDA {
        const ModeRange slice = sliceOf(column, s);
        const std::uint32_t word = slice.segment->modes.reportedModes[slice.first / kBitsPerWord];
        return SliceInts{} + static_cast<std::int32_t>(word >> (slice.first % kBitsPerWord));
    });
    const Ints reported = (words >> (laneNumbers() % kSliceLanes)) & 1;
    return activeLanes(column) & (reported == 0);
}

void reportMode(const Segment& segment, std::int32_t mode, std::int32_t sample, float phase,
                FailedLookups& failures) {
    if (failures.count == FailedLookups::kCapacity) {
        return;
    }
    segment.modes.reportedModes[mode / kBitsPerWord] |= std::uint32_t{1} << (mode % kBitsPerWord);
    failures.list[failures.count++] = {
        .sample = segment.sample + sample, .slot = segment.slot, .mode = mode, .phase = phase};
}

// Reports the lanes of `column` that failed at `sample` of its segments and have not been reported.
void reportLanes(const Column& column, Ints failed, std::int32_t sample, Floats phase,
                 FailedLookups& failures) {
    std::int32_t reports[kLanes];
    float phases[kLanes];
    store(reports, failed & unreportedLanes(column));
    store(phases, phase);
    for (std::int32_t lane = 0; lane < kLanes; ++lane) {
        if (reports[lane] != 0) {
            const ModeRange slice = sliceOf(column, lane / kSliceLanes);
            reportMode(*slice.segment, slice.first + lane % kSliceLanes, sample, phases[lane],
                       failures);
        }
    }
}

} // namespace
} // namespace zelvatone
