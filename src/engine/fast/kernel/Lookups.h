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

// The active lanes of a column whose failed look-ups have not been reported yet.
ZELVATONE_INLINE Ints unreportedLanes(const Column& column) {
    const std::uint32_t word = column.modes.reportedModes[column.first / kBitsPerWord];
    const Words laneBits = Words{} + (word >> (column.first % kBitsPerWord));
    const Ints reported = (reinterpret_cast<Ints>(laneBits) >> laneNumbers()) & 1;
    return lanesBelow(column.modes.count, 0) & (reported == 0);
}

void reportMode(const Column& column, std::int32_t lane, std::int32_t sample, float phase,
                FailedLookups& failures) {
    if (failures.count == FailedLookups::kCapacity) {
        return;
    }
    const std::int32_t mode = column.first + lane;
    column.modes.reportedModes[mode / kBitsPerWord] |= std::uint32_t{1} << (mode % kBitsPerWord);
    failures.list[failures.count++] = {.sample = column.segment->sample + sample,
                                       .slot = column.segment->slot,
                                       .mode = mode,
                                       .phase = phase};
}

// Reports the lanes of `column` that failed at `sample` of its segment and have not been reported.
void reportLanes(const Column& column, Ints failed, std::int32_t sample, Floats phase,
                 FailedLookups& failures) {
    std::int32_t reports[kLanes];
    float phases[kLanes];
    store(reports, failed & unreportedLanes(column));
    store(phases, phase);
    for (std::int32_t lane = 0; lane < column.modes.count; ++lane) {
        if (reports[lane] != 0) {
            reportMode(column, lane, sample, phases[lane], failures);
        }
    }
}

} // namespace
} // namespace zelvatone
