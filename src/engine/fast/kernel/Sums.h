// Stage 2: each sample is the sum of its modes in mode order. That order is part of the sound, so
// the lanes here are samples, and one mode after the other is added to all of them.
#pragma once

#include "engine/fast/kernel/Columns.h"

namespace zelvatone {
namespace {

// Four samples, in all widths: their table entries are loaded one by one in any case, and a wider
// vector would take more to put together than it saves.
using Quad __attribute__((vector_size(16))) = float;

ZELVATONE_INLINE Quad loadQuad(const float* from) {
    Quad quad;
    __builtin_memcpy(&quad, from, sizeof quad);
    return quad;
}

ZELVATONE_INLINE Quad lookUpQuad(const std::int32_t* index, const float* cycle) {
    return Quad{cycle[index[0]], cycle[index[kLanes]], cycle[index[2 * kLanes]],
                cycle[index[3 * kLanes]]};
}

// Neighbouring lanes of a column that hold consecutive modes of one voice.
struct LaneRange {
    const std::int32_t* index; // of the column
    const float* movingAmps;   // of the column
    const float* amps;         // of the modes, unless they move
    std::int32_t first, count; // lanes
};

// Adds the modes of a range to kQuads quads of samples, the first of which begins at `sample` of
// the chunk.
template<bool kMoves, std::int32_t kQuads>
ZELVATONE_INLINE void addRange(Quad (&sums)[kQuads], const LaneRange& range, std::int32_t sample,
                               const float* cycle) {
    const std::int32_t* indices = range.index + sample * kLanes + range.first;
    const float* movingAmps = range.movingAmps + sample * kLanes;
    for (std::int32_t mode = 0; mode < range.count; ++mode) {
        const float* amps = movingAmps + quadOf(range.first + mode);
        repeat<kQuads>([&](std::int32_t q) ZELVATONE_INLINE_LAMBDA {
            const Quad entries = lookUpQuad(indices + mode + q * kQuad * kLanes, cycle);
            if constexpr (kMoves) {
                sums[q] += loadQuad(amps + q * kQuad * kLanes) * entries;
            } else {
                sums[q] += range.amps[mode] * entries;
            }
        });
    }
}

// A voice: its lanes and where its samples go.
struct VoiceSum {
    const LaneRange* ranges;
    std::int32_t rangeCount;
    float gain;
    float* out;
};

// Writes kQuads quads of samples from `sample` of the chunk on.
template<bool kMoves, std::int32_t kQuads>
void sumQuads(const VoiceSum& voice, std::int32_t sample, const float* cycle) {
    Quad sums[kQuads] = {};
    for (std::int32_t r = 0; r < voice.rangeCount; ++r) {
        addRange<kMoves>(sums, voice.ranges[r], sample, cycle);
    }
    repeat<kQuads>([&](std::int32_t q) ZELVATONE_INLINE_LAMBDA {
        const Quad out = voice.gain * sums[q];
        __builtin_memcpy(voice.out + sample + q * kQuad, &out, sizeof out);
    });
}

// Writes `samples` samples of a voice, rounded up to whole quads. Four quads at a time keep the
// processor busy while each waits for its last sum.
template<bool kMoves>
void sumVoice(const VoiceSum& voice, std::int32_t samples, const float* cycle) {
    std::int32_t done = 0;
    for (; samples - done > 3 * kQuad; done += 4 * kQuad) {
        sumQuads<kMoves, 4>(voice, done, cycle);
    }
    if (samples - done > kQuad) {
        sumQuads<kMoves, 2>(voice, done, cycle);
        done += 2 * kQuad;
    }
    if (samples > done) {
        sumQuads<kMoves, 1>(voice, done, cycle);
    }
}

} // namespace
} // namespace zelvatone
