// One vector of modes. Voices get its lanes in slices, so that several small voices can share it.
#pragma once

#include "engine/fast/ModeKernel.h"
#include "engine/fast/kernel/Slices.h"

namespace zelvatone {
namespace {

// Consecutive modes of one voice. `first` is a whole number of slices.
struct ModeRange {
    const Segment* segment;
    std::int32_t first;
    std::int32_t count;
};

// Either all lanes are of one voice, from the first lane on, or each slice is of a voice of its
// own.
struct Column {
    ModeRange modes;             // of the one voice; up to kLanes
    bool isShared;               // then `slices` and `active` hold instead of `modes`
    ModeRange slices[kSlices];   // up to kSliceLanes each
    std::int32_t active[kLanes]; // all bits where a lane has a mode, none elsewhere
    std::int32_t* index;         // both receive kLanes values a sample
    float* amp;
};

// How many slices so many modes take.
constexpr std::int32_t slicesFor(std::int32_t modes) {
    return (modes + kSliceLanes - 1) / kSliceLanes;
}

// The modes of slice `s` of a range.
ZELVATONE_INLINE ModeRange sliceOf(const ModeRange& modes, std::int32_t s) {
    const std::int32_t left = modes.count - s * kSliceLanes;
    return {.segment = modes.segment,
            .first = modes.first + s * kSliceLanes,
            .count = left < kSliceLanes ? left : kSliceLanes};
}

ZELVATONE_INLINE ModeRange sliceOf(const Column& column, std::int32_t s) {
    return column.isShared ? column.slices[s] : sliceOf(column.modes, s);
}

void putSlice(Column& column, std::int32_t place, const ModeRange& slice) {
    const SliceInts active = SliceInts{0, 1, 2, 3} < slice.count;
    column.slices[place] = slice;
    __builtin_memcpy(column.active + place * kSliceLanes, &active, sizeof active);
}

// Gives `modes` the slices of a shared column from `place` on.
void putSlices(Column& column, std::int32_t place, const ModeRange& modes) {
    for (std::int32_t s = 0; s < slicesFor(modes.count); ++s) {
        putSlice(column, place + s, sliceOf(modes, s));
    }
}

// Gives `modes` the lanes of a column from slice `place` on.
void putModes(Column& column, std::int32_t place, const ModeRange& modes) {
    if (place == 0) {
        column.modes = modes;
        column.isShared = false;
        return;
    }
    if (!column.isShared) {
        putSlices(column, 0, column.modes);
        column.isShared = true;
    }
    putSlices(column, place, modes);
}

ZELVATONE_INLINE Ints activeLanes(const Column& column) {
    if (!column.isShared) {
        return lanesBelow(column.modes.count, 0);
    }
    Ints active;
    __builtin_memcpy(&active, column.active, sizeof active);
    return active;
}

// Where modes lie in one of the arrays of their bank.
ZELVATONE_INLINE float* placeOf(const ModeRange& modes, float* ModeBank::*array) {
    return modes.segment->modes.*array + modes.first;
}

// The values of a column's modes in one of the arrays of their banks, zero in lanes without a mode.
ZELVATONE_INLINE Floats loadActive(const Column& column, float* ModeBank::*array) {
    if (!column.isShared) {
        return keep(activeLanes(column), load(placeOf(column.modes, array)));
    }
    const Floats values = joinSlices([&](std::int32_t s) ZELVATONE_INLINE_LAMBDA {
        return loadSlice(placeOf(column.slices[s], array));
    });
    return keep(activeLanes(column), values);
}

// Lanes without a mode leave the arrays as they are.
ZELVATONE_INLINE void storeActive(const Column& column, float* ModeBank::*array, Floats v) {
    if (!column.isShared) {
        float* to = placeOf(column.modes, array);
        store(to, select(activeLanes(column), v, load(to)));
        return;
    }
    SliceFloats values[kSlices];
    SliceInts active[kSlices];
    splitSlices(v, values);
    __builtin_memcpy(active, column.active, sizeof active);
    repeat<kSlices>([&](std::int32_t s) ZELVATONE_INLINE_LAMBDA {
        float* to = placeOf(column.slices[s], array);
        const SliceFloats stored = active[s] ? values[s] : loadSlice(to);
        __builtin_memcpy(to, &stored, sizeof stored);
    });
}

// The drop factors of a column's modes.
ZELVATONE_INLINE Floats loadFactors(const Column& column, const BlockConstants& constants) {
    if (!column.isShared) {
        return load(constants.dropFactors + column.modes.first);
    }
    return joinSlices([&](std::int32_t s) ZELVATONE_INLINE_LAMBDA {
        return loadSlice(constants.dropFactors + column.slices[s].first);
    });
}

} // namespace
} // namespace zelvatone
