// The kernel of one width: what the table of functions points to.
#pragma once

#include "engine/OutputScale.h"
#include "engine/fast/kernel/BankAnalysis.h"
#include "engine/fast/kernel/Columns.h"
#include "engine/fast/kernel/SingleSample.h"
#include "engine/fast/kernel/Sums.h"

namespace zelvatone {
namespace {

constexpr std::int32_t kMaxColumns = kBatchLanes / kLanes + KernelScratch::kMostIdleVectors;

// The columns of all voices of a batch, one voice after the other, and idle ones behind them.
struct Batch {
    Column columns[kMaxColumns];
    std::int32_t count = 0;
};

std::int32_t columnsOf(const ModeBank& bank) {
    return (bank.count + kLanes - 1) / kLanes;
}

Column makeColumn(const ModeBank& bank, std::int32_t first) {
    const std::int32_t left = bank.count - first;
    return {.modes = {.amp = bank.amp + first,
                      .freq = bank.freq + first,
                      .phase = bank.phase + first,
                      .ampStep = bank.ampStep + first,
                      .freqStep = bank.freqStep + first,
                      .targetAmp = bank.targetAmp + first,
                      .targetFreq = bank.targetFreq + first,
                      .count = left < kLanes ? left : kLanes},
            .first = first,
            .index = nullptr,
            .amp = nullptr};
}

void append(Batch& batch, const Column& column, KernelScratch& scratch) {
    Column& place = batch.columns[batch.count];
    place = column;
    place.index = scratch.index + batch.count * kColumnSize;
    place.amp = scratch.amp + batch.count * kColumnSize;
    ++batch.count;
}

void collect(Batch& batch, const Segment* segments, std::int32_t count, KernelScratch& scratch) {
    for (std::int32_t s = 0; s < count; ++s) {
        const ModeBank& bank = segments[s].modes;
        for (std::int32_t first = 0; first < bank.count; first += kLanes) {
            append(batch, makeColumn(bank, first), scratch);
        }
    }
}

// Makes whole groups of the columns: wide ones, and a narrow one for a small rest.
void fillUp(Batch& batch, KernelScratch& scratch) {
    const std::int32_t rest = batch.count % kWideGroup;
    const std::int32_t group = rest > kNarrowGroup ? kWideGroup : kNarrowGroup;
    float* idle = scratch.idle;
    const ModeBank kEmptyBank = {idle, idle, idle, idle, idle, idle, idle, 0};
    for (std::int32_t c = rest; c != 0 && c < group; ++c) {
        append(batch, makeColumn(kEmptyBank, 0), scratch);
    }
}

template<std::int32_t kGroup>
void prepareGroup(const Column* columns, std::int32_t samples, const BankTraits& traits,
                  const BlockConstants& constants) {
    turnGroupFor<kGroup>(traits)(columns, samples, constants);
    if (traits.loudnessMoves) {
        glideGroup<kGroup>(columns, samples);
    }
}

void prepare(const Batch& batch, std::int32_t samples, const BankTraits& traits,
             const BlockConstants& constants) {
    std::int32_t c = 0;
    for (; batch.count - c >= kWideGroup; c += kWideGroup) {
        prepareGroup<kWideGroup>(batch.columns + c, samples, traits, constants);
    }
    if (c < batch.count) {
        prepareGroup<kNarrowGroup>(batch.columns + c, samples, traits, constants);
    }
}

void sum(const Batch& batch, const Segment* segments, std::int32_t count, std::int32_t from,
         std::int32_t samples, const BankTraits& traits, const BlockConstants& constants) {
    const auto sumOne = traits.loudnessMoves ? sumVoice<true> : sumVoice<false>;
    const Column* columns = batch.columns;
    for (std::int32_t s = 0; s < count; ++s) {
        const VoiceSum voice{.columns = columns,
                             .columnCount = columnsOf(segments[s].modes),
                             .gain = segments[s].gain,
                             .out = segments[s].out + from};
        sumOne(voice, samples, constants.cycle);
        columns += voice.columnCount;
    }
}

void render(const Segment* segments, std::int32_t count, std::int32_t samples,
            const BankTraits& traits, const BlockConstants& constants, KernelScratch& scratch) {
    Batch batch;
    collect(batch, segments, count, scratch);
    fillUp(batch, scratch);
    for (std::int32_t from = 0; from < samples; from += kChunkSamples) {
        const std::int32_t left = samples - from;
        const std::int32_t chunk = left < kChunkSamples ? left : kChunkSamples;
        prepare(batch, chunk, traits, constants);
        sum(batch, segments, count, from, chunk, traits, constants);
    }
}

void mix(float* sum, float* weight, const float* voice, const float* level, std::int32_t samples) {
    std::int32_t k = 0;
    for (; k + kLanes <= samples; k += kLanes) {
        const Floats e = load(level + k);
        store(sum + k, load(sum + k) + load(voice + k) * e);
        store(weight + k, load(weight + k) + e);
    }
    for (; k < samples; ++k) {
        sum[k] += voice[k] * level[k];
        weight[k] += level[k];
    }
}

using DoubleQuad __attribute__((vector_size(32))) = double;

void finish(float* out, const float* sum, const float* weight, std::int32_t samples) {
    for (std::int32_t k = 0; k < samples; k += kQuad) {
        Quad s, w;
        __builtin_memcpy(&s, sum + k, sizeof s);
        __builtin_memcpy(&w, weight + k, sizeof w);
        const Quad fixed = Quad{} + kGainBelowFullWeight;
        const Quad gain = w > kFullWeight ? 1.0F / w : fixed;
        const DoubleQuad wide = __builtin_convertvector(gain * s, DoubleQuad) * kOutputGain;
        const Quad y = __builtin_convertvector(wide, Quad);
        __builtin_memcpy(out + k, &y, sizeof y);
    }
}

constexpr ModeKernel makeKernel(const char* name) {
    return {.name = name,
            .lanes = kLanes,
            .analyse = analyse,
            .render = render,
            .sum = sumOnce,
            .glide = glideOnce,
            .advance = advanceOnce,
            .mix = mix,
            .finish = finish};
}

} // namespace
} // namespace zelvatone
