// Stage 1: where in the wave table each mode reads at each sample, and how loud it is.
// Lanes are modes. Columns are worked on in groups, because each depends on its own last sample and
// would leave the processor waiting alone.
#pragma once

#include "engine/fast/kernel/Phases.h"
#include "engine/fast/kernel/Quads.h"

namespace zelvatone {
namespace {

// Enough to keep the processor busy, and a divisor of a full bank's columns in the widest vectors;
// and what is enough for the few columns of one small voice, of ten modes say.
constexpr std::int32_t kWideGroup = 7;
constexpr std::int32_t kNarrowGroup = kLanes == 4 ? 4 : 2;
// The exact wrap is so much work for one column that few keep the processor busy.
constexpr std::int32_t kWideExactGroup = 4;
constexpr std::int32_t kNarrowExactGroup = 2;
static_assert(kPaddedModes / kWidestLanes % kWideGroup == 0);
static_assert(KernelScratch::kMostIdleVectors == kWideGroup - 1);
// Elements of one column in each array of the scratch.
constexpr std::int32_t kColumnSize = kChunkSamples * kLanes;

// Stores what next() returns for the samples of one quad.
template<class Vector, class Element, class Next>
ZELVATONE_INLINE void storeQuad(Element* to, Next next) {
    Vector rows[kQuad];
    repeat<kQuad>([&](std::int32_t k) ZELVATONE_INLINE_LAMBDA { rows[k] = next(); });
    storeQuads(to, rows);
}

// The same for the first `samples` samples of a quad that ends early; the rest is zero.
template<class Vector, class Element, class Next>
ZELVATONE_INLINE void storePart(Element* to, std::int32_t samples, Next next) {
    Vector rows[kQuad] = {};
    for (std::int32_t k = 0; k < samples; ++k) {
        rows[k] = next();
    }
    storeQuads(to, rows);
}

// Moves the `lanes` of a group on by `samples` samples and stores what each has to say about every
// one of them; `placeOf` says where.
template<class Vector, class Lanes, std::int32_t kGroup, class PlaceOf>
ZELVATONE_INLINE void storeGroup(Lanes (&lanes)[kGroup], std::int32_t samples, PlaceOf placeOf) {
    std::int32_t k = 0;
    for (; k + kQuad <= samples; k += kQuad) {
        repeat<kGroup>([&](std::int32_t c) ZELVATONE_INLINE_LAMBDA {
            storeQuad<Vector>(placeOf(c) + k * kLanes,
                              [&]() ZELVATONE_INLINE_LAMBDA { return lanes[c].next(); });
        });
    }
    if (k < samples) {
        repeat<kGroup>([&](std::int32_t c) ZELVATONE_INLINE_LAMBDA {
            storePart<Vector>(placeOf(c) + k * kLanes, samples - k,
                              [&]() ZELVATONE_INLINE_LAMBDA { return lanes[c].next(); });
        });
    }
}

// The samples of a run that are prepared and summed together.
struct Chunk {
    std::int32_t first; // of the segment
    std::int32_t samples;
    const float* radiansPerHz; // phase advance of 1 Hz, by sample
};

// Goes over a chunk in which look-ups of `column` have failed once more, to see which and when. Its
// bank still stands at the beginning of the chunk.
template<FrequencyMotion motion>
[[gnu::noinline]] void reportFailures(const Column& column, const Chunk& chunk,
                                      const BlockConstants& constants, FailedLookups& failures) {
    PhaseLanes<motion, Wrap::kExact> lanes;
    lanes.read(column, constants, chunk.radiansPerHz[0]);
    for (std::int32_t k = 0; k < chunk.samples; ++k) {
        const Floats phase = lanes.phase;
        lanes.failed = Ints{};
        lanes.next(chunk.radiansPerHz[k]);
        reportLanes(column, lanes.failed, chunk.first + k, phase, failures);
    }
}

template<std::int32_t kGroup, FrequencyMotion motion, Wrap wrap>
void turnGroup(const Column* columns, const Chunk& chunk, const BlockConstants& constants,
               FailedLookups& failures) {
    PhaseLanes<motion, wrap> lanes[kGroup];
    repeat<kGroup>([&](std::int32_t c) ZELVATONE_INLINE_LAMBDA {
        lanes[c].read(columns[c], constants, chunk.radiansPerHz[0]);
    });
    for (std::int32_t k = 0; k < chunk.samples; ++k) {
        const float radiansPerHz = chunk.radiansPerHz[k];
        repeat<kGroup>([&](std::int32_t c) ZELVATONE_INLINE_LAMBDA {
            store(columns[c].index + k * kLanes, lanes[c].next(radiansPerHz));
        });
    }
    repeat<kGroup>([&](std::int32_t c) ZELVATONE_INLINE_LAMBDA {
        if constexpr (wrap == Wrap::kExact) {
            if (anySet(lanes[c].failed & unreportedLanes(columns[c]))) {
                reportFailures<motion>(columns[c], chunk, constants, failures);
            }
        }
        lanes[c].write(columns[c]);
    });
}

// The amplitudes of a column while they glide.
struct LoudnessLanes {
    ZELVATONE_INLINE void read(const Column& column) {
        amp = loadActive(column, &ModeBank::amp);
        step = loadActive(column, &ModeBank::ampStep);
        glide = planGlide(amp, loadActive(column, &ModeBank::targetAmp), step);
    }

    // The amplitudes of this sample; moves on to the next one.
    ZELVATONE_INLINE Floats next() {
        const Floats now = amp;
        amp = glideOn(amp, glide);
        return now;
    }

    ZELVATONE_INLINE void write(const Column& column) const {
        storeActive(column, &ModeBank::amp, amp);
        storeActive(column, &ModeBank::ampStep, stepAfter(glide, amp, step));
    }

    Floats amp, step;
    Glide glide;
};

template<std::int32_t kGroup>
void glideGroup(const Column* columns, std::int32_t samples) {
    LoudnessLanes lanes[kGroup];
    repeat<kGroup>([&](std::int32_t c) ZELVATONE_INLINE_LAMBDA { lanes[c].read(columns[c]); });
    storeGroup<Floats>(lanes, samples, [columns](std::int32_t c) { return columns[c].amp; });
    repeat<kGroup>([&](std::int32_t c) ZELVATONE_INLINE_LAMBDA { lanes[c].write(columns[c]); });
}

using TurnGroup = void (*)(const Column*, const Chunk&, const BlockConstants&, FailedLookups&);

template<std::int32_t kGroup, Wrap wrap>
TurnGroup turnGroupFor(FrequencyMotion motion) {
    switch (motion) {
    case FrequencyMotion::kStill:
        return turnGroup<kGroup, FrequencyMotion::kStill, wrap>;
    case FrequencyMotion::kUnderway:
        return turnGroup<kGroup, FrequencyMotion::kUnderway, wrap>;
    case FrequencyMotion::kGlide:
        return turnGroup<kGroup, FrequencyMotion::kGlide, wrap>;
    default:
        return turnGroup<kGroup, FrequencyMotion::kGlideAndDrop, wrap>;
    }
}

template<std::int32_t kGroup>
TurnGroup turnGroupFor(const BankTraits& traits) {
    switch (traits.wrap) {
    case Wrap::kNear:
        return turnGroupFor<kGroup, Wrap::kNear>(traits.motion);
    case Wrap::kFar: // the turning is constant
        return turnGroup<kGroup, FrequencyMotion::kStill, Wrap::kFar>;
    case Wrap::kEither:
        return turnGroupFor<kGroup, Wrap::kEither>(traits.motion);
    default:
        return turnGroupFor<kGroup, Wrap::kAny>(traits.motion);
    }
}

// The same for the exact wrap, for which the analysis gives two motions only.
template<std::int32_t kGroup>
TurnGroup turnExactGroupFor(const BankTraits& traits) {
    return traits.motion == FrequencyMotion::kGlideAndDrop
               ? turnGroup<kGroup, FrequencyMotion::kGlideAndDrop, Wrap::kExact>
               : turnGroup<kGroup, FrequencyMotion::kUnderway, Wrap::kExact>;
}

} // namespace
} // namespace zelvatone
