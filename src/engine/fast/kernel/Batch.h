// The columns of all segments that are rendered together.
#pragma once

#include "engine/fast/kernel/Columns.h"
#include "engine/fast/kernel/DeadColumns.h"

namespace zelvatone {
namespace {

constexpr std::int32_t kMaxColumns = kBatchLanes / kLanes + KernelScratch::kMostIdleVectors;

struct Batch {
    Column columns[kMaxColumns]; // that sound: one segment after the other, then idle ones
    std::int32_t count = 0;
    std::int32_t ofSegment[kBatchSegments]; // how many of these columns each has
    Column dead[kMaxColumns];
    std::int32_t deadCount = 0;
    Segment idle;
};

void append(Batch& batch, const Column& column, KernelScratch& scratch) {
    Column& place = batch.columns[batch.count];
    place = column;
    place.index = scratch.index + batch.count * kColumnSize;
    place.amp = scratch.amp + batch.count * kColumnSize;
    ++batch.count;
}

// Appends the columns of a segment and returns how many of them sound.
std::int32_t appendSegment(Batch& batch, const Segment& segment, const BankTraits& traits,
                           KernelScratch& scratch) {
    const std::int32_t before = batch.count;
    for (std::int32_t first = 0; first < segment.modes.count; first += kLanes) {
        const Column column = makeColumn(segment, first);
        if (traits.wrap == Wrap::kExact && isDead(column)) {
            batch.dead[batch.deadCount++] = column;
        } else {
            append(batch, column, scratch);
        }
    }
    return batch.count - before;
}

// Makes whole groups of the columns: wide ones, and a narrow one for a small rest. Dead ones go in
// narrow groups.
void fillUp(Batch& batch, const BankTraits& traits, KernelScratch& scratch) {
    const bool isExact = traits.wrap == Wrap::kExact;
    const std::int32_t wide = isExact ? kWideExactGroup : kWideGroup;
    const std::int32_t narrow = isExact ? kNarrowExactGroup : kNarrowGroup;
    const std::int32_t rest = batch.count % wide;
    const std::int32_t group = rest > narrow ? wide : narrow;
    float* idle = scratch.idle;
    batch.idle = {.modes = {idle, idle, idle, idle, idle, idle, idle, scratch.idleFlags, 0},
                  .gain = 0.0F,
                  .out = nullptr,
                  .slot = 0,
                  .sample = 0};
    for (std::int32_t c = rest; c != 0 && c < group; ++c) {
        append(batch, makeColumn(batch.idle, 0), scratch);
    }
    while (batch.deadCount % kNarrowGroup != 0) {
        batch.dead[batch.deadCount++] = makeColumn(batch.idle, 0);
    }
}

} // namespace
} // namespace zelvatone
