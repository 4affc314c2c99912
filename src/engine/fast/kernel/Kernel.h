// The kernel of one width: what the table of functions points to.
#pragma once

#include "engine/OutputScale.h"
#include "engine/fast/kernel/BankAnalysis.h"
#include "engine/fast/kernel/Batch.h"
#include "engine/fast/kernel/SingleSample.h"

namespace zelvatone {
namespace {

// One chunk of a batch, and what stage 1 needs to know of it.
struct Preparation {
    const Batch& batch;
    const Chunk& chunk;
    const BankTraits& traits;
    const BlockConstants& constants;
    FailedLookups& failures;
};

// Prepares the columns from `first` on, as far as they fill groups of kGroup, and returns where the
// rest begins.
template<std::int32_t kGroup>
std::int32_t prepareGroups(const Preparation& p, std::int32_t first, TurnGroup turn) {
    for (; p.batch.sounding.count() - first >= kGroup; first += kGroup) {
        turn(p.batch.sounding.columns + first, p.chunk, p.constants, p.failures);
        if (p.traits.loudnessMoves) {
            glideGroup<kGroup>(p.batch.sounding.columns + first, p.chunk.samples);
        }
    }
    return first;
}

void prepare(const Preparation& p) {
    if (p.traits.wrap == Wrap::kExact) {
        const std::int32_t rest =
            prepareGroups<kWideExactGroup>(p, 0, turnExactGroupFor<kWideExactGroup>(p.traits));
        prepareGroups<kNarrowExactGroup>(p, rest, turnExactGroupFor<kNarrowExactGroup>(p.traits));
        return;
    }
    const std::int32_t rest = prepareGroups<kWideGroup>(p, 0, turnGroupFor<kWideGroup>(p.traits));
    prepareGroups<kNarrowGroup>(p, rest, turnGroupFor<kNarrowGroup>(p.traits));
}

void sum(const Batch& batch, const Segment* segments, std::int32_t count, const Chunk& chunk,
         const BankTraits& traits, const BlockConstants& constants) {
    const auto sumOne = traits.loudnessMoves ? sumVoice<true> : sumVoice<false>;
    const LaneRange* ranges = batch.ranges;
    for (std::int32_t s = 0; s < count; ++s) {
        const VoiceSum voice{.ranges = ranges,
                             .rangeCount = batch.ofSegment[s],
                             .gain = segments[s].gain,
                             .out = segments[s].out + chunk.first};
        sumOne(voice, chunk.samples, constants.cycle);
        ranges += voice.rangeCount;
    }
}

void render(const Segment* segments, std::int32_t count, std::int32_t samples,
            const BankTraits& traits, const BlockConstants& constants, KernelScratch& scratch) {
    Batch batch;
    for (std::int32_t s = 0; s < count; ++s) {
        batch.ofSegment[s] = appendSegment(batch, segments[s], traits, scratch);
    }
    fillUp(batch, traits, scratch);
    moveDead(batch.dead.columns, batch.dead.count(), samples, traits, constants);
    const float* radiansPerHz = constants.phaseAdvance->radiansPerHz + segments[0].sample;
    for (std::int32_t first = 0; first < samples; first += kChunkSamples) {
        const std::int32_t left = samples - first;
        const Chunk chunk{.first = first,
                          .samples = left < kChunkSamples ? left : kChunkSamples,
                          .radiansPerHz = radiansPerHz + first};
        prepare({batch, chunk, traits, constants, scratch.failures});
        sum(batch, segments, count, chunk, traits, constants);
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
            .amplitudesAreInRange = amplitudesAreInRange,
            .render = render,
            .sum = sumOnce,
            .glide = glideOnce,
            .advance = advanceOnce,
            .mix = mix,
            .finish = finish};
}

} // namespace
} // namespace zelvatone
