// The columns of all segments that are rendered together.
#pragma once

#include "engine/fast/kernel/Columns.h"
#include "engine/fast/kernel/DeadColumns.h"

namespace zelvatone {
namespace {

constexpr std::int32_t kMaxColumns = kBatchLanes / kLanes + KernelScratch::kMostIdleVectors;

// One segment after the other, and idle columns at the end.
struct Batch {
    Column columns[kMaxColumns];
    std::int32_t count = 0;
    std::int32_t ofSegment[kBatchSegments]; // how many columns each has
    Segment idle;
};

void append(Batch& batch, const Column& column, KernelScratch& scratch) {
    Column& place = batch.columns[batch.count];
    place = column;
    place.index = scratch.index + batch.count * kColumnSize;
    place.amp = scratch.amp + batch.count * kColumnSize;
    ++batch.count;
}

// Appends the columns of `segment` that sound and returns their number. Those that never will again
// are moved on by `samples` here.
std::int32_t appendSegment(Batch& batch, const Segment& segment, std::int32_t samples,
                           const BankTraits& traits, const BlockConstants& constants,
                           KernelScratch& scratch) {
    const std::int32_t before = batch.count;
    for (std::int32_t first = 0; first < segment.modes.count; first += kLanes) {
        const Column column = makeColumn(segment, first);
        if (traits.wrap == Wrap::kExact && isDead(column)) {
            moveDead(column, samples, constants);
        } else {
            append(batch, column, scratch);
        }
    }
    return batch.count - before;
}

// Makes whole groups of the columns: wide ones, and a narrow one for a small rest.
void fillUp(Batch& batch, KernelScratch& scratch) {
    const std::int32_t rest = batch.count % kWideGroup;
    const std::int32_t group = rest > kNarrowGroup ? kWideGroup : kNarrowGroup;
    float* idle = scratch.idle;
    batch.idle = {.modes = {idle, idle, idle, idle, idle, idle, idle, scratch.idleFlags, 0},
                  .gain = 0.0F,
                  .out = nullptr,
                  .slot = 0,
                  .sample = 0};
    for (std::int32_t c = rest; c != 0 && c < group; ++c) {
        append(batch, makeColumn(batch.idle, 0), scratch);
    }
}

} // namespace
} // namespace zelvatone
