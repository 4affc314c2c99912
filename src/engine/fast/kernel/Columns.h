// Stage 1: where in the wave table each mode reads at each sample, and how loud it is.
// Lanes are modes. A column is one vector of modes of one voice. Columns are worked on in groups,
// because each depends on its own last sample and would leave the processor waiting alone.
#pragma once

#include "engine/fast/ModeKernel.h"
#include "engine/fast/kernel/Gliding.h"
#include "engine/fast/kernel/Quads.h"
#include "engine/fast/kernel/Wrapping.h"

namespace zelvatone {
namespace {

// Enough to keep the processor busy, and a divisor of a full bank's columns in the widest vectors;
// and what is enough for the few columns of one small voice.
constexpr std::int32_t kWideGroup = 7;
constexpr std::int32_t kNarrowGroup = 4;
static_assert(kPaddedModes / kWidestLanes % kWideGroup == 0);
static_assert(KernelScratch::kMostIdleVectors == kWideGroup - 1);
// Elements of one column in each array of the scratch.
constexpr std::int32_t kColumnSize = kChunkSamples * kLanes;

// The seven arrays, from the column's first mode on.
struct Column {
    ModeBank modes;      // `count`: active lanes, from the first on
    std::int32_t first;  // number of the first mode
    std::int32_t* index; // both receive kLanes values a sample
    float* amp;
};

// The values of a column, with lanes that are not active at zero.
ZELVATONE_INLINE Floats loadActive(Ints active, const float* from) {
    return keep(active, load(from));
}

ZELVATONE_INLINE void storeActive(Ints active, float* to, Floats v) {
    store(to, select(active, v, load(to)));
}

// The phases of a column and what moves them.
template<FrequencyMotion motion, Wrap wrap>
struct PhaseLanes {
    static constexpr bool kGlides = motion == FrequencyMotion::kGlide;
    static constexpr bool kBoth = motion == FrequencyMotion::kGlideAndDrop;

    ZELVATONE_INLINE void read(const Column& column, const BlockConstants& constants) {
        active = lanesBelow(column.modes.count, 0);
        phase = loadActive(active, column.modes.phase);
        freq = loadActive(active, column.modes.freq);
        factor = load(constants.dropFactors + column.first);
        if constexpr (kGlides || kBoth) {
            target = loadActive(active, column.modes.targetFreq);
            step = loadActive(active, column.modes.freqStep);
        }
        if constexpr (kGlides) {
            glide = planGlide(freq, target, step);
        }
        entriesPerRadian = constants.entriesPerRadian;
        radiansPerHz = constants.radiansPerHz;
        dropsGliding = -std::int32_t{constants.dropsGliding};
        turning = freq * radiansPerHz;
        if constexpr (wrap == Wrap::kFar) {
            far = planFarWrap(turning);
        }
    }

    // The table indices of this sample; moves on to the next one.
    ZELVATONE_INLINE Ints next() {
        const Ints index = truncate(entriesPerRadian * phase);
        advance();
        return index;
    }

    ZELVATONE_INLINE void advance() {
        if constexpr (kGlides) {
            freq = glideOn(freq, glide);
        }
        if constexpr (kBoth) {
            glideOnce(freq, target, step);
        }
        if constexpr (motion != FrequencyMotion::kStill) {
            turning = freq * radiansPerHz;
        }
        phase = wrapped(turning + phase);
        if constexpr (motion == FrequencyMotion::kDrop) {
            freq = freq * factor;
        }
        if constexpr (kBoth) {
            const Ints drops = (step == 0.0F) | dropsGliding;
            freq = select(drops, freq * factor, freq);
        }
    }

    ZELVATONE_INLINE Floats wrapped(Floats turned) const {
        if constexpr (wrap == Wrap::kNear) {
            return wrapNear(turned);
        } else if constexpr (wrap == Wrap::kFar) {
            return wrapFar(turned, far);
        } else {
            return wrapAny(turned);
        }
    }

    ZELVATONE_INLINE void write(const Column& column) const {
        storeActive(active, column.modes.phase, phase);
        if constexpr (motion != FrequencyMotion::kStill) {
            storeActive(active, column.modes.freq, freq);
        }
        if constexpr (kGlides) {
            storeActive(active, column.modes.freqStep, stepAfter(glide, freq, step));
        }
        if constexpr (kBoth) {
            storeActive(active, column.modes.freqStep, step);
        }
    }

    Ints active;
    Floats phase, freq, turning; // radians, Hz, radians a sample
    Floats target, step, factor;
    Glide glide;
    FarWrap far;
    float entriesPerRadian, radiansPerHz;
    std::int32_t dropsGliding; // all bits or none
};

// Stores what next() answers for the samples of one quad.
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

template<std::int32_t kGroup, FrequencyMotion motion, Wrap wrap>
void turnGroup(const Column* columns, std::int32_t samples, const BlockConstants& constants) {
    PhaseLanes<motion, wrap> lanes[kGroup];
    repeat<kGroup>([&](std::int32_t c)
                       ZELVATONE_INLINE_LAMBDA { lanes[c].read(columns[c], constants); });
    for (std::int32_t k = 0; k < samples; ++k) {
        repeat<kGroup>([&](std::int32_t c) ZELVATONE_INLINE_LAMBDA {
            store(columns[c].index + k * kLanes, lanes[c].next());
        });
    }
    repeat<kGroup>([&](std::int32_t c) ZELVATONE_INLINE_LAMBDA { lanes[c].write(columns[c]); });
}

// The amplitudes of a column while they glide.
struct LoudnessLanes {
    ZELVATONE_INLINE void read(const Column& column) {
        active = lanesBelow(column.modes.count, 0);
        amp = loadActive(active, column.modes.amp);
        step = loadActive(active, column.modes.ampStep);
        glide = planGlide(amp, loadActive(active, column.modes.targetAmp), step);
    }

    // The amplitudes of this sample; moves on to the next one.
    ZELVATONE_INLINE Floats next() {
        const Floats now = amp;
        amp = glideOn(amp, glide);
        return now;
    }

    ZELVATONE_INLINE void write(const Column& column) const {
        storeActive(active, column.modes.amp, amp);
        storeActive(active, column.modes.ampStep, stepAfter(glide, amp, step));
    }

    Ints active;
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

using TurnGroup = void (*)(const Column*, std::int32_t, const BlockConstants&);

template<std::int32_t kGroup, Wrap wrap>
TurnGroup turnGroupFor(FrequencyMotion motion) {
    switch (motion) {
    case FrequencyMotion::kStill:
        return turnGroup<kGroup, FrequencyMotion::kStill, wrap>;
    case FrequencyMotion::kGlide:
        return turnGroup<kGroup, FrequencyMotion::kGlide, wrap>;
    default:
        return turnGroup<kGroup, FrequencyMotion::kDrop, wrap>;
    }
}

template<std::int32_t kGroup>
TurnGroup turnGroupFor(const BankTraits& traits) {
    if (traits.motion == FrequencyMotion::kGlideAndDrop) {
        return turnGroup<kGroup, FrequencyMotion::kGlideAndDrop, Wrap::kAny>;
    }
    switch (traits.wrap) {
    case Wrap::kNear:
        return turnGroupFor<kGroup, Wrap::kNear>(traits.motion);
    case Wrap::kFar: // the turning is constant
        return turnGroup<kGroup, FrequencyMotion::kStill, Wrap::kFar>;
    default:
        return turnGroupFor<kGroup, Wrap::kAny>(traits.motion);
    }
}

} // namespace
} // namespace zelvatone
