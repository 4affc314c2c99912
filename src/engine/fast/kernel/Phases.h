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
    ZELVATONE_INLINE void read(const Column& column, const BlockConstants&) {
        freq = loadActive(column, &ModeBank::freq);
    }
    ZELVATONE_INLINE void glide() {}
    ZELVATONE_INLINE void drop() {}
    ZELVATONE_INLINE void write(const Column&) const {}

    Floats freq;
};

template<>
struct FrequencyLanes<FrequencyMotion::kUnderway> {
    ZELVATONE_INLINE void read(const Column& column, const BlockConstants& constants) {
        freq = loadActive(column, &ModeBank::freq);
        const Floats ownStep = loadActive(column, &ModeBank::freqStep);
        const Ints onTarget = freq == loadActive(column, &ModeBank::targetFreq);
        step = select(onTarget, fill(-0.0F), ownStep); // x + -0 is x, also for x = -0
        factor = select(dropsNow(ownStep, constants), loadFactors(column, constants), fill(1.0F));
    }
    ZELVATONE_INLINE void glide() { freq = freq + step; }
    ZELVATONE_INLINE void drop() { freq = freq * factor; }
    ZELVATONE_INLINE void write(const Column& column) const {
        storeActive(column, &ModeBank::freq, freq);
    }

    Floats freq, step, factor;
};

template<>
struct FrequencyLanes<FrequencyMotion::kGlide> {
    ZELVATONE_INLINE void read(const Column& column, const BlockConstants&) {
        freq = loadActive(column, &ModeBank::freq);
        step = loadActive(column, &ModeBank::freqStep);
        plan = planGlide(freq, loadActive(column, &ModeBank::targetFreq), step);
    }
    ZELVATONE_INLINE void glide() { freq = glideOn(freq, plan); }
    ZELVATONE_INLINE void drop() {}
    ZELVATONE_INLINE void write(const Column& column) const {
        storeActive(column, &ModeBank::freq, freq);
        storeActive(column, &ModeBank::freqStep, stepAfter(plan, freq, step));
    }

    Floats freq, step;
    Glide plan;
};

template<>
struct FrequencyLanes<FrequencyMotion::kGlideAndDrop> {
    ZELVATONE_INLINE void read(const Column& column, const BlockConstants& constants) {
        freq = loadActive(column, &ModeBank::freq);
        target = loadActive(column, &ModeBank::targetFreq);
        step = loadActive(column, &ModeBank::freqStep);
        factor = loadFactors(column, constants);
        dropsGliding = -std::int32_t{constants.dropsGliding};
    }
    ZELVATONE_INLINE void glide() { glideOnce(freq, target, step); }
    ZELVATONE_INLINE void drop() {
        freq = select((step == 0.0F) | dropsGliding, freq * factor, freq);
    }
    ZELVATONE_INLINE void write(const Column& column) const {
        storeActive(column, &ModeBank::freq, freq);
        storeActive(column, &ModeBank::freqStep, step);
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
        phase = loadActive(column, &ModeBank::phase);
        frequencies.read(column, blockConstants);
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
            return truncateSmall(entriesPerRadian * phase);
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
        storeActive(column, &ModeBank::phase, phase);
        frequencies.write(column);
    }

    // Vectors first: they lie on boundaries of their own size.
    Floats phase, turning; // radians, radians a sample
    Ints failed;           // lanes whose look-up has failed at some sample
    FrequencyLanes<motion> frequencies;
    const BlockConstants* constants;
    float entriesPerRadian;
    PhaseWrapper<wrap> wrapper;
};

} // namespace
} // namespace zelvatone
