// How the phases of a column move from sample to sample.
#pragma once

#include "engine/fast/kernel/Gliding.h"
#include "engine/fast/kernel/Lookups.h"
#include "engine/fast/kernel/Wrapping.h"

namespace zelvatone {
namespace {

// Which lanes the drop takes while their steps are `step`.
ZELVATONE_INLINE Ints dropsNow(Floats step, const BlockConstants& constants) {
    return (step == 0.0F) | -std::int32_t{constants.dropsGliding};
}

// The frequencies of a column and what moves them.
template<FrequencyMotion motion>
struct FrequencyLanes;

template<>
struct FrequencyLanes<FrequencyMotion::kStill> {
    ZELVATONE_INLINE void read(Ints active, const Column& column, const BlockConstants&) {
        freq = loadActive(active, column.modes.freq);
    }
    ZELVATONE_INLINE void glide() {}
    ZELVATONE_INLINE void drop() {}
    ZELVATONE_INLINE void write(Ints, const Column&) const {}

    Floats freq;
};

template<>
struct FrequencyLanes<FrequencyMotion::kUnderway> {
    ZELVATONE_INLINE void read(Ints active, const Column& column, const BlockConstants& constants) {
        freq = loadActive(active, column.modes.freq);
        const Floats ownStep = loadActive(active, column.modes.freqStep);
        const Ints onTarget = freq == loadActive(active, column.modes.targetFreq);
        step = select(onTarget, fill(-0.0F), ownStep); // x + -0 is x, also for x = -0
        factor = select(dropsNow(ownStep, constants), load(constants.dropFactors + column.first),
                        fill(1.0F));
    }
    ZELVATONE_INLINE void glide() { freq = freq + step; }
    ZELVATONE_INLINE void drop() { freq = freq * factor; }
    ZELVATONE_INLINE void write(Ints active, const Column& column) const {
        storeActive(active, column.modes.freq, freq);
    }

    Floats freq, step, factor;
};

template<>
struct FrequencyLanes<FrequencyMotion::kGlide> {
    ZELVATONE_INLINE void read(Ints active, const Column& column, const BlockConstants&) {
        freq = loadActive(active, column.modes.freq);
        step = loadActive(active, column.modes.freqStep);
        plan = planGlide(freq, loadActive(active, column.modes.targetFreq), step);
    }
    ZELVATONE_INLINE void glide() { freq = glideOn(freq, plan); }
    ZELVATONE_INLINE void drop() {}
    ZELVATONE_INLINE void write(Ints active, const Column& column) const {
        storeActive(active, column.modes.freq, freq);
        storeActive(active, column.modes.freqStep, stepAfter(plan, freq, step));
    }

    Floats freq, step;
    Glide plan;
};

template<>
struct FrequencyLanes<FrequencyMotion::kGlideAndDrop> {
    ZELVATONE_INLINE void read(Ints active, const Column& column, const BlockConstants& constants) {
        freq = loadActive(active, column.modes.freq);
        target = loadActive(active, column.modes.targetFreq);
        step = loadActive(active, column.modes.freqStep);
        factor = load(constants.dropFactors + column.first);
        dropsGliding = -std::int32_t{constants.dropsGliding};
    }
    ZELVATONE_INLINE void glide() { glideOnce(freq, target, step); }
    ZELVATONE_INLINE void drop() {
        freq = select((step == 0.0F) | dropsGliding, freq * factor, freq);
    }
    ZELVATONE_INLINE void write(Ints active, const Column& column) const {
        storeActive(active, column.modes.freq, freq);
        storeActive(active, column.modes.freqStep, step);
    }

    Floats freq, target, step, factor;
    std::int32_t dropsGliding; // all bits or none
};

// What wrapping by one of the rules keeps from sample to sample.
template<Wrap wrap>
struct PhaseWrapper {
    ZELVATONE_INLINE void prepare(Floats /*turning*/) {}
    ZELVATONE_INLINE Floats wrapped(Floats phase) {
        if constexpr (wrap == Wrap::kNear) {
            return wrapNear(phase);
        } else if constexpr (wrap == Wrap::kEither) {
            return wrapEither(phase);
        } else {
            return wrapAny(phase);
        }
    }
};

template<>
struct PhaseWrapper<Wrap::kFar> {
    ZELVATONE_INLINE void prepare(Floats turning) { plan = planFarWrap(turning); }
    ZELVATONE_INLINE Floats wrapped(Floats phase) const { return wrapFar(phase, plan); }

    FarWrap plan;
};

template<>
struct PhaseWrapper<Wrap::kExact> {
    ZELVATONE_INLINE void prepare(Floats /*turning*/) { reducer.reset(); }
    ZELVATONE_INLINE Floats wrapped(Floats phase) { return wrapExact(phase, reducer); }

    TurnReducer reducer;
};

// The phases of a column and what moves them.
template<FrequencyMotion motion, Wrap wrap>
struct PhaseLanes {
    static constexpr bool kMayFail = wrap == Wrap::kExact;

    // `radiansPerHz`: the phase advance of 1 Hz in the first sample.
    ZELVATONE_INLINE void read(const Column& column, const BlockConstants& blockConstants,
                               float radiansPerHz) {
        constants = &blockConstants;
        active = lanesBelow(column.modes.count, 0);
        phase = loadActive(active, column.modes.phase);
        frequencies.read(active, column, blockConstants);
        entriesPerRadian = blockConstants.entriesPerRadian;
        turning = frequencies.freq * radiansPerHz;
        wrapper.prepare(turning);
        failed = Ints{};
    }

    // Returns the table indices of this sample and moves on to the next one. `radiansPerHz`: the
    // phase advance of 1 Hz on the way there.
    ZELVATONE_INLINE Ints next(float radiansPerHz) {
        const Ints index = lookUp();
        advance(radiansPerHz);
        return index;
    }

    ZELVATONE_INLINE Ints lookUp() {
        if constexpr (kMayFail) {
            const Entries entries = findEntries(phase, *constants);
            failed |= ~entries.found;
            return entries.index;
        } else {
            return truncate(entriesPerRadian * phase);
        }
    }

    ZELVATONE_INLINE void advance(float radiansPerHz) {
        frequencies.glide();
        if constexpr (motion != FrequencyMotion::kStill) {
            turning = frequencies.freq * radiansPerHz;
        }
        phase = wrapper.wrapped(turning + phase);
        frequencies.drop();
    }

    ZELVATONE_INLINE void write(const Column& column) const {
        storeActive(active, column.modes.phase, phase);
        frequencies.write(active, column);
    }

    // Vectors first: they lie on boundaries of their own size.
    Ints active;
    Floats phase, turning; // radians, radians a sample
    Ints failed;           // lanes whose look-up has failed at some sample
    FrequencyLanes<motion> frequencies;
    const BlockConstants* constants;
    float entriesPerRadian;
    PhaseWrapper<wrap> wrapper;
};

} // namespace
} // namespace zelvatone
