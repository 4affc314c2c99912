// The columns of all segments that are rendered together.
#pragma once

#include "engine/fast/kernel/Columns.h"
#include "engine/fast/kernel/DeadColumns.h"
#include "engine/fast/kernel/Sums.h"

namespace zelvatone {
namespace {

constexpr std::int32_t kMaxColumns = kBatchLanes / kLanes + KernelScratch::kMostIdleVectors;
static_assert(kBatchLanes % kLanes == 0);

// Columns that fill up slice by slice.
struct ColumnList {
    std::int32_t count() const { return (sliceCount + kSlices - 1) / kSlices; }

    Column columns[kMaxColumns];
    std::int32_t sliceCount = 0;
};

struct Batch {
    ColumnList sounding; // the modes of one segment after the other, then idle lanes
    LaneRange ranges[kBatchLanes / kSliceLanes]; // of these columns, in the same order
    std::int32_t rangeCount = 0;
    std::int32_t ofSegment[kBatchSegments]; // how many of these ranges each has
    ColumnList dead;
    Segment idle;
};

// Appends `modes` as far as they fit into the last column of a list, or into a new one if that is
// full, and returns how many those are.
std::int32_t appendSome(ColumnList& list, ModeRange modes) {
    const std::int32_t place = list.sliceCount % kSlices;
    const std::int32_t room = kLanes - place * kSliceLanes;
    modes.count = modes.count < room ? modes.count : room;
    putModes(list.columns[list.sliceCount / kSlices], place, modes);
    list.sliceCount += slicesFor(modes.count);
    return modes.count;
}

void appendDead(Batch& batch, ModeRange modes) {
    while (modes.count > 0) {
        const std::int32_t done = appendSome(batch.dead, modes);
        modes.first += done;
        modes.count -= done;
    }
}

void appendSounding(Batch& batch, ModeRange modes, KernelScratch& scratch) {
    while (modes.count > 0) {
        const std::int32_t column = batch.sounding.sliceCount / kSlices;
        const std::int32_t place = batch.sounding.sliceCount % kSlices;
        const std::int32_t done = appendSome(batch.sounding, modes);
        batch.ranges[batch.rangeCount++] = {.index = scratch.index + column * kColumnSize,
                                            .movingAmps = scratch.amp + column * kColumnSize,
                                            .amps = modes.segment->modes.amp + modes.first,
                                            .first = place * kSliceLanes,
                                            .count = done};
        modes.first += done;
        modes.count -= done;
    }
}

// Appends the modes of a segment, whole slices of dead ones apart from the others.
void appendWithDead(Batch& batch, const ModeRange& modes, KernelScratch& scratch) {
    for (std::int32_t s = 0; s < slicesFor(modes.count);) {
        ModeRange alike = sliceOf(modes, s);
        const bool isDeadRange = isDead(alike);
        for (++s; s < slicesFor(modes.count) && isDead(sliceOf(modes, s)) == isDeadRange; ++s) {
            alike.count += sliceOf(modes, s).count;
        }
        if (isDeadRange) {
            appendDead(batch, alike);
        } else {
            appendSounding(batch, alike, scratch);
        }
    }
}

// Appends a segment and returns how many ranges of it sound.
std::int32_t appendSegment(Batch& batch, const Segment& segment, const BankTraits& traits,
                           KernelScratch& scratch) {
    const std::int32_t before = batch.rangeCount;
    const ModeRange modes{.segment = &segment, .first = 0, .count = segment.modes.count};
    if (traits.wrap == Wrap::kExact) {
        appendWithDead(batch, modes, scratch);
    } else {
        appendSounding(batch, modes, scratch);
    }
    return batch.rangeCount - before;
}

// Fills the last column up and adds idle ones, up to `count` columns.
void fillUp(ColumnList& list, std::int32_t count, const Segment& idle) {
    const ModeRange none{.segment = &idle, .first = 0, .count = 0};
    for (; list.sliceCount % kSlices != 0; ++list.sliceCount) {
        Column& last = list.columns[list.sliceCount / kSlices];
        if (last.isShared) {
            putSlice(last, list.sliceCount % kSlices, none);
        }
    }
    for (std::int32_t c = list.count(); c < count; ++c) {
        putModes(list.columns[c], 0, none);
        list.sliceCount += kSlices;
    }
}

// Makes whole groups of the columns: wide ones, and a narrow one for a small rest. Dead ones go in
// narrow groups.
void fillUp(Batch& batch, const BankTraits& traits, KernelScratch& scratch) {
    const bool isExact = traits.wrap == Wrap::kExact;
    const std::int32_t wide = isExact ? kWideExactGroup : kWideGroup;
    const std::int32_t narrow = isExact ? kNarrowExactGroup : kNarrowGroup;
    float* idle = scratch.idle;
    batch.idle = {.modes = {idle, idle, idle, idle, idle, idle, idle, scratch.idleFlags, 0},
                  .gain = 0.0F,
                  .out = nullptr,
                  .slot = 0,
                  .sample = 0};
    const std::int32_t rest = batch.sounding.count() % wide;
    const std::int32_t group = rest == 0 ? 0 : rest > narrow ? wide : narrow;
    fillUp(batch.sounding, batch.sounding.count() - rest + group, batch.idle);
    const std::int32_t deadGroups = (batch.dead.count() + kNarrowGroup - 1) / kNarrowGroup;
    fillUp(batch.dead, deadGroups * kNarrowGroup, batch.idle);
    for (std::int32_t c = 0; c < batch.sounding.count(); ++c) {
        batch.sounding.columns[c].index = scratch.index + c * kColumnSize;
        batch.sounding.columns[c].amp = scratch.amp + c * kColumnSize;
    }
}

} // namespace
} // namespace zelvatone
