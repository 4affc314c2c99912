// Columns of dead modes. A phase that is NaN stays NaN until the note ends, so such a mode never
// sounds again; only its frequency and its amplitude still move.
#pragma once

#include "engine/fast/kernel/Columns.h"

namespace zelvatone {
namespace {

// Whether no mode of `slice` will sound or report anything.
bool isDead(const ModeRange& slice) {
    const ModeBank& bank = slice.segment->modes;
    std::int32_t dead = 0;
    while (dead < slice.count && bank.phase[slice.first + dead] != bank.phase[slice.first + dead] &&
           isReported(bank, slice.first + dead)) {
        ++dead;
    }
    return dead == slice.count;
}

template<FrequencyMotion motion>
struct DeadLanes {
    ZELVATONE_INLINE void read(const Column& column, const BlockConstants& constants) {
        frequencies.read(column, constants);
        loudness.read(column);
    }

    ZELVATONE_INLINE void next() {
        frequencies.glide();
        frequencies.drop();
        loudness.next();
    }

    // A step that has ended lets the drop take the mode, even where the frequency is as before.
    ZELVATONE_INLINE Ints differsFrom(const DeadLanes& other) const {
        return (bits(frequencies.freq) ^ bits(other.frequencies.freq)) |
               (bits(frequencies.step) ^ bits(other.frequencies.step)) |
               (bits(loudness.amp) ^ bits(other.loudness.amp));
    }

    ZELVATONE_INLINE void write(const Column& column) const {
        frequencies.write(column);
        loudness.write(column);
    }

    FrequencyLanes<motion> frequencies;
    LoudnessLanes loudness;
};

// Most dead columns do not move any more: then the first sample shows it.
template<FrequencyMotion motion>
void moveDeadGroup(const Column* columns, std::int32_t samples, const BlockConstants& constants) {
    DeadLanes<motion> lanes[kNarrowGroup];
    Ints moved{};
    repeat<kNarrowGroup>([&](std::int32_t c) ZELVATONE_INLINE_LAMBDA {
        lanes[c].read(columns[c], constants);
        const DeadLanes<motion> before = lanes[c];
        lanes[c].next();
        moved |= lanes[c].differsFrom(before);
    });
    const std::int32_t end = anyLane(moved) != 0 ? samples : 1;
    for (std::int32_t k = 1; k < end; ++k) {
        repeat<kNarrowGroup>([&](std::int32_t c) ZELVATONE_INLINE_LAMBDA { lanes[c].next(); });
    }
    repeat<kNarrowGroup>([&](std::int32_t c)
                             ZELVATONE_INLINE_LAMBDA { lanes[c].write(columns[c]); });
}

// Moves `count` dead columns, whole groups of them, on by `samples` samples.
void moveDead(const Column* columns, std::int32_t count, std::int32_t samples,
              const BankTraits& traits, const BlockConstants& constants) {
    const auto moveGroup = traits.motion == FrequencyMotion::kGlideAndDrop
                               ? moveDeadGroup<FrequencyMotion::kGlideAndDrop>
                               : moveDeadGroup<FrequencyMotion::kUnderway>;
    for (std::int32_t c = 0; c < count; c += kNarrowGroup) {
        moveGroup(columns + c, samples, constants);
    }
}

} // namespace
} // namespace zelvatone
