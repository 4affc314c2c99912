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

// Adds the active modes of a column to kQuads quads of samples, the first of which begins at
// `sample` of the chunk. Unless they move, the amplitudes are those of the bank.
template<bool kMoves, std::int32_t kQuads>
ZELVATONE_INLINE void addColumn(Quad (&sums)[kQuads], const Column& column, std::int32_t sample,
                                const float* cycle) {
    for (std::int32_t lane = 0; lane < column.modes.count; ++lane) {
        const std::int32_t* index = column.index + sample * kLanes + lane;
        const float* amps = column.amp + sample * kLanes + quadOf(lane);
        repeat<kQuads>([&](std::int32_t q) ZELVATONE_INLINE_LAMBDA {
            const Quad entries = lookUpQuad(index + q * kQuad * kLanes, cycle);
            if constexpr (kMoves) {
                sums[q] += loadQuad(amps + q * kQuad * kLanes) * entries;
            } else {
                sums[q] += column.modes.amp[lane] * entries;
            }
        });
    }
}

// A voice: its columns and where its samples go.
struct VoiceSum {
    const Column* columns;
    std::int32_t columnCount;
    float gain;
    float* out;
};

// Writes kQuads quads of samples from `sample` of the chunk on.
template<bool kMoves, std::int32_t kQuads>
void sumQuads(const VoiceSum& voice, std::int32_t sample, const float* cycle) {
    Quad sums[kQuads] = {};
    for (std::int32_t c = 0; c < voice.columnCount; ++c) {
        addColumn<kMoves>(sums, voice.columns[c], sample, cycle);
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
