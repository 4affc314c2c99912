// Values on their way to their targets.
#pragma once

#include "engine/fast/kernel/Lanes.h"

namespace zelvatone {
namespace {

// One sample of the reference renderer, lane by lane.
ZELVATONE_INLINE void glideOnce(Floats& value, Floats target, Floats& step) {
    const Ints differs = value != target;
    const Floats moved = value + step;
    const Ints crossed = (target < value) ^ (target < moved);
    const Ints arrives = differs & (crossed | (moved == target));
    value = select(arrives, target, select(differs, moved, value));
    step = select(arrives, Floats{}, step);
}

// Which lanes glideOnce would change at all. Steps too small to change the value never will.
ZELVATONE_INLINE Ints glides(Floats value, Floats target, Floats step) {
    return (value != target) & (bits(value + step) != bits(value));
}

// The same rule for many samples. While nothing else moves the value, one that heads for its target
// stops there and one that heads away never does, so two bounds do all that the comparisons do.
struct Glide {
    Floats step;
    Floats lower;
    Floats upper;
};

ZELVATONE_INLINE Glide planGlide(Floats value, Floats target, Floats step) {
    const Ints rises = (value < target) & (step > 0.0F);
    const Ints falls = (target < value) & (step < 0.0F);
    return {.step = select(value == target, fill(-0.0F), step), // x + -0 is x, also for x = -0
            .lower = select(falls, target, fill(-__builtin_inff())),
            .upper = select(rises, target, fill(__builtin_inff()))};
}

// Of two equal values the bound is taken: a zero gets the sign of the target's.
ZELVATONE_INLINE Floats bounded(Floats value, const Glide& glide) {
    const Floats capped = value < glide.upper ? value : glide.upper;
    return glide.lower < capped ? capped : glide.lower;
}

ZELVATONE_INLINE Floats glideOn(Floats value, const Glide& glide) {
    return bounded(value + glide.step, glide);
}

// The step that remains of `step` with `value` reached.
ZELVATONE_INLINE Floats stepAfter(const Glide& glide, Floats value, Floats step) {
    return select((value == glide.lower) | (value == glide.upper), Floats{}, step);
}

} // namespace
} // namespace zelvatone
