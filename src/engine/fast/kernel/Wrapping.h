// Bringing phases back into the cycle, in single precision and to the bit what the reference
// renderer does with constants in double precision.
//
// The reference renderer has three cases: a phase between 0 and 4 pi loses 2 pi above 2 pi, one
// between -2 pi and 0 gains 2 pi, both in double precision and rounded once; all others go through
// an exact fmod by kTurn. Every float in each case was tried against it.
#pragma once

#include "engine/fast/kernel/Remainder.h"

namespace zelvatone {
namespace {

// How much kTurn is larger than 2 pi. Subtracting both in turn is the same as subtracting 2 pi in
// double precision: the first step is exact, the second rounds once.
constexpr float kTurnExcess = static_cast<float>(6.2831854820251465 - 6.283185307179586);

// kTurn in two parts with few bits: their products with a whole number of turns up to 4095, and
// what remains after subtracting those from a phase up to kWidestPhase, are exact.
constexpr float kTurnHead = 6.28125F;
constexpr float kTurnTail = kTurn - kTurnHead;
constexpr float kWidestPhase = 25000.0F; // radians

// A little below 1 / (2 pi): a count of turns made with it is never too large.
constexpr float kTurnsPerRadian = 0.1591549F;

// The smaller of two non-negative floats, or the one that is not negative.
ZELVATONE_INLINE Floats smallerPositive(Floats a, Floats b) {
    const auto x = reinterpret_cast<Words>(a);
    const auto y = reinterpret_cast<Words>(b);
    return reinterpret_cast<Floats>(x < y ? x : y); // a sign bit makes the largest words
}

// `phase`: 0 to under 4 pi.
ZELVATONE_INLINE Floats wrapNear(Floats phase) {
    if constexpr (!kComparesWords) {
        const Ints beyond = phase >= kTurn;
        return (phase - keep(beyond, fill(kTurn))) + keep(beyond, fill(kTurnExcess));
    } else {
        return smallerPositive(phase, (phase - kTurn) + kTurnExcess);
    }
}

// What wrapping needs to know of lanes that turn by a constant, non-negative angle a sample. A lane
// below two turns may take the first case or the third; one above it always the third, and
// how many turns it loses is known but for one.
struct FarWrap {
    Floats lowHead, lowTail;   // subtracting both removes the fewest turns the lane can have,
    Floats midHead, midTail;   // one more,
    Floats highHead, highTail; // and two more
    Floats midExcess;          // makes `mid` the first case
};

ZELVATONE_INLINE FarWrap planFarWrap(Floats turning) {
    const Ints near = turning < 2.0F * kTurn;
    const Floats turns = toFloats(truncate(turning * kTurnsPerRadian));
    FarWrap plan;
    plan.lowHead = select(near, Floats{}, turns * kTurnHead);
    plan.lowTail = select(near, Floats{}, turns * kTurnTail);
    plan.midHead = select(near, Floats{}, (turns + 1.0F) * kTurnHead);
    plan.midTail = select(near, fill(kTurn), (turns + 1.0F) * kTurnTail);
    plan.highHead = select(near, Floats{}, (turns + 2.0F) * kTurnHead);
    plan.highTail = select(near, fill(2.0F * kTurn), (turns + 2.0F) * kTurnTail);
    plan.midExcess = keep(near, fill(kTurnExcess));
    return plan;
}

// `phase`: what the planned turning has added to a phase between 0 and 2 pi. One of the three
// differences lies in the cycle; it is exact, and the smallest that is not negative.
ZELVATONE_INLINE Floats wrapFar(Floats phase, const FarWrap& plan) {
    const Floats low = (phase - plan.lowHead) - plan.lowTail;
    const Floats mid = ((phase - plan.midHead) - plan.midTail) + plan.midExcess;
    const Floats high = (phase - plan.highHead) - plan.highTail;
    return smallerPositive(smallerPositive(low, mid), high);
}

// `phase`: -2 pi to 4 pi, without the ends.
ZELVATONE_INLINE Floats wrapEither(Floats phase) {
    const Floats raised = phase + kTurn;
    const Floats lost = phase - (raised - kTurn);
    const Floats forwards = raised + (lost - kTurnExcess);
    return select(phase < 0.0F, forwards, wrapNear(phase));
}

// Which phases wrapEither takes.
ZELVATONE_INLINE Ints isWithinATurn(Floats phase) {
    return (phase > -kTurn) & (phase < 2.0F * kTurn);
}

// fmod(phase, kTurn), sign of `phase`, up to kWidestPhase either way.
ZELVATONE_INLINE Floats remainder(Floats phase) {
    const Floats size = absolute(phase);
    const Floats turns = toFloats(truncateSmall(size * kTurnsPerRadian)); // at most one too few
    const Floats rest = (size - turns * kTurnHead) - turns * kTurnTail;
    const Floats less = rest - kTurn;
    return fromBits(bits(select(less < 0.0F, rest, less)) | (bits(phase) & INT32_MIN));
}

// `phase`: up to kWidestPhase either way.
ZELVATONE_INLINE Floats wrapAny(Floats phase) {
    return select(isWithinATurn(phase), wrapEither(phase), remainder(phase));
}

// `phase`: any float.
ZELVATONE_INLINE Floats wrapExact(Floats phase, TurnReducer& reducer) {
    return select(isWithinATurn(phase), wrapEither(phase), reducer.remainder(phase));
}

} // namespace
} // namespace zelvatone
