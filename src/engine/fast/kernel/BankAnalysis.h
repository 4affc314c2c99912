// Analyses a bank once for a whole run, so that its samples need no comparisons.
#pragma once

#include "engine/fast/ModeKernel.h"
#include "engine/fast/kernel/Phases.h"

namespace zelvatone {
namespace {

// What can be true of a lane, one bit each.
enum LaneFlag : std::int32_t {
    kOutOfRange = 1,     // an amplitude that is not a number, or outside the input range
    kOffTarget = 2,      // not on its targets
    kLoudnessGlides = 4, // the amplitude
    kMoves = 8,          // the frequency, by a step or by the drop
    kMayDrop = 16,       // the drop takes this mode, now or once its glide is over
    kMayArrive = 32,     // the frequency may reach its target
    kNegativePhase = 64, //
    kBackwards = 128,    // a negative turning
    kWholeTurns = 256,   // 2 pi a sample either way, or close to it
    kNearTwoTurns = 512, // too close below 4 pi for the far wrap's rounding
    kPhaseTooFast = 1024 // too fast for all wraps but the exact one, or not a number
};

// No amplitude comes near it in normal operation, and nothing below it can overflow in a run.
constexpr float kLargestValue = 1.0e9F;
// Below 2 pi by more than a run of rounded glide steps can add.
constexpr float kNearlyOneTurn = 6.28F;
// Leaves room for the phase that it is added to.
constexpr float kLargestTurning = kWidestPhase - 2.0F * kTurn;
// The most by which the rounding of a run can move a frequency, as a part of it: two roundings a
// sample of up to 2^-24 each, and some more.
constexpr float kRoundingDrift = 2.0e-5F;

ZELVATONE_INLINE Ints flagIf(Ints mask, LaneFlag what) {
    return mask & static_cast<std::int32_t>(what);
}

ZELVATONE_INLINE Ints isOutOfRange(Floats v, float limit = kLargestValue) {
    return ~(absolute(v) <= limit); // also for NaN
}

ZELVATONE_INLINE Floats lowerOf(Floats a, Floats b) {
    return b < a ? b : a;
}

ZELVATONE_INLINE Floats higherOf(Floats a, Floats b) {
    return a < b ? b : a;
}

// The active lanes of one vector of modes.
struct LaneView {
    ZELVATONE_INLINE LaneView(const ModeBank& bank, std::int32_t first)
        : bank(bank), first(first), active(lanesBelow(bank.count, first)) {}

    ZELVATONE_INLINE Floats read(const float* array) const {
        return keep(active, load(array + first));
    }

    const ModeBank& bank;
    std::int32_t first;
    Ints active;
};

// How the turning of a lane matters, with frequencies from `lowest` to `highest` before the drop
// has raised them.
ZELVATONE_INLINE Ints analyseTurning(Floats lowest, Floats highest,
                                     const BlockConstants& constants) {
    const float radiansPerHz = constants.phaseAdvance->most;
    const float mostRadians = radiansPerHz * constants.dropGrowth;
    const Floats slow = lowest * radiansPerHz;
    const Floats fast = highest * mostRadians;
    const Floats size = (absolute(lowest) + absolute(highest)) * mostRadians;
    return flagIf(bits(lowest) < 0, kBackwards) |
           flagIf((fast >= kNearlyOneTurn) | (lowest * mostRadians <= -kNearlyOneTurn),
                  kWholeTurns) |
           flagIf((fast > 2.0F * kNearlyOneTurn) & (slow < 2.0F * kTurn), kNearTwoTurns) |
           flagIf(isOutOfRange(size, kLargestTurning), kPhaseTooFast);
}

ZELVATONE_INLINE Ints analyseState(const LaneView& view) {
    const Floats amp = view.read(view.bank.amp);
    const Floats phase = view.read(view.bank.phase);
    const Ints offTarget = (amp != view.read(view.bank.targetAmp)) |
                           (view.read(view.bank.freq) != view.read(view.bank.targetFreq));
    return flagIf(isOutOfRange(amp), kOutOfRange) | flagIf(offTarget, kOffTarget) |
           flagIf(bits(phase) < 0, kNegativePhase) |
           flagIf(isOutOfRange(phase, kTurn), kPhaseTooFast);
}

// All there is to find in a lane on its targets, unless frequencies drop.
ZELVATONE_INLINE Ints analyseIdle(const LaneView& view, const BlockConstants& constants) {
    const Floats freq = view.read(view.bank.freq);
    return analyseState(view) | analyseTurning(freq, freq, constants);
}

ZELVATONE_INLINE Ints analyseLoudness(const LaneView& view) {
    const Floats amp = view.read(view.bank.amp);
    const Floats target = view.read(view.bank.targetAmp);
    const Floats step = view.read(view.bank.ampStep);
    return flagIf(isOutOfRange(target) | isOutOfRange(step), kOutOfRange) |
           flagIf(glides(amp, target, step), kLoudnessGlides);
}

// How far a run can take a frequency of this size: what the drop makes of it, the steps, and their
// rounding. `drops`: the lanes that drop. NaN where a value is none, or infinite.
ZELVATONE_INLINE Floats reachOf(Floats freq, Floats step, Ints drops,
                                const BlockConstants& constants, std::int32_t samples) {
    const Floats change = select(drops, fill(constants.dropChange), fill(kRoundingDrift));
    const float most = 1.001F * static_cast<float>(samples) * constants.dropGrowth;
    return absolute(freq) * change + absolute(step) * most;
}

ZELVATONE_INLINE Ints analyseFrequency(const LaneView& view, const BlockConstants& constants,
                                       std::int32_t samples) {
    const Floats freq = view.read(view.bank.freq);
    const Floats target = view.read(view.bank.targetFreq);
    const Floats step = view.read(view.bank.freqStep);
    const Floats factor = load(constants.dropFactors + view.first);
    const Ints mayDrop = view.active & (factor != 1.0F);
    const Ints drops = mayDrop & dropsNow(step, constants);
    const Ints steps = glides(freq, target, step) | (drops & (step != 0.0F));
    const Floats reach = reachOf(freq, step, drops, constants, samples);
    const Ints mayArrive = steps & ~(absolute(target - freq) > reach); // also for NaN

    // Without the drop a glide ends at the target. A step that is rounded to the frequency's last
    // place counts for up to twice its size.
    const Glide glide = planGlide(freq, target, step);
    const Floats straight = bounded(freq + glide.step * static_cast<float>(2 * samples), glide);
    // With it, a frequency may pass its target and come back to it.
    const Ints wanders = drops & (step != 0.0F);
    const Floats goal = select(wanders & mayArrive, target, freq);
    const Floats down = freq - keep(step < 0.0F, reach);
    const Floats up = higherOf(freq, Floats{}) + keep(step > 0.0F, reach);
    const Floats lowest = lowerOf(lowerOf(freq, goal), select(wanders, down, straight));
    const Floats highest = higherOf(higherOf(freq, goal), select(wanders, up, straight));
    return flagIf(steps | (drops & (bits(freq * factor) != bits(freq))), kMoves) |
           flagIf(mayDrop, kMayDrop) | flagIf(mayArrive, kMayArrive) |
           flagIf(steps & isOutOfRange(reach + absolute(target)), kPhaseTooFast) |
           analyseTurning(lowest, highest, constants);
}

Ints analyseIdle(const ModeBank& bank, const BlockConstants& constants) {
    Ints flags{};
    for (std::int32_t first = 0; first < bank.count; first += kLanes) {
        flags |= analyseIdle(LaneView(bank, first), constants);
    }
    return flags;
}

Ints analyseMoving(const ModeBank& bank, const BlockConstants& constants, std::int32_t samples) {
    Ints flags{};
    for (std::int32_t first = 0; first < bank.count; first += kLanes) {
        const LaneView view(bank, first);
        flags |=
            analyseState(view) | analyseLoudness(view) | analyseFrequency(view, constants, samples);
    }
    return flags;
}

// The flags of all lanes together.
std::int32_t analyseBank(const ModeBank& bank, const BlockConstants& constants,
                         std::int32_t samples) {
    if (!constants.drops) {
        const std::int32_t flags = anyLane(analyseIdle(bank, constants));
        if ((flags & kOffTarget) == 0) {
            return flags;
        }
    }
    return anyLane(analyseMoving(bank, constants, samples));
}

FrequencyMotion motionOf(std::int32_t flags) {
    if ((flags & kMayArrive) != 0) {
        // Bounds instead of comparisons are right for numbers that nothing else moves.
        return (flags & (kMayDrop | kPhaseTooFast)) == 0 ? FrequencyMotion::kGlide
                                                         : FrequencyMotion::kGlideAndDrop;
    }
    return (flags & kMoves) != 0 ? FrequencyMotion::kUnderway : FrequencyMotion::kStill;
}

Wrap wrapOf(std::int32_t flags, FrequencyMotion motion) {
    if ((flags & kPhaseTooFast) != 0) {
        return Wrap::kExact;
    }
    if ((flags & kNegativePhase) != 0) {
        return Wrap::kAny;
    }
    if ((flags & kWholeTurns) == 0) {
        return (flags & kBackwards) == 0 ? Wrap::kNear : Wrap::kEither;
    }
    return motion == FrequencyMotion::kStill && (flags & (kNearTwoTurns | kBackwards)) == 0
               ? Wrap::kFar
               : Wrap::kAny;
}

bool amplitudesAreInRange(const ModeBank& bank) {
    Ints outOfRange{};
    for (std::int32_t first = 0; first < bank.count; first += kLanes) {
        const LaneView view(bank, first);
        outOfRange |= isOutOfRange(view.read(bank.amp)) | isOutOfRange(view.read(bank.targetAmp)) |
                      isOutOfRange(view.read(bank.ampStep));
    }
    return !anySet(outOfRange);
}

BankTraits analyse(const ModeBank& bank, const BlockConstants& constants, std::int32_t samples) {
    std::int32_t flags = analyseBank(bank, constants, samples);
    if (constants.indexLimit == 0.0F) { // every look-up fails
        flags |= kPhaseTooFast;
    }
    FrequencyMotion motion = motionOf(flags);
    if (constants.phaseAdvance->varies && motion == FrequencyMotion::kStill) {
        motion = FrequencyMotion::kUnderway; // turns anew at every sample
    }
    const Wrap wrap = wrapOf(flags, motion);
    if (wrap == Wrap::kExact && motion == FrequencyMotion::kStill) {
        motion = FrequencyMotion::kUnderway; // one loop less
    }
    return {.inFastRange = (flags & kOutOfRange) == 0,
            .loudnessMoves = (flags & kLoudnessGlides) != 0,
            .motion = motion,
            .wrap = wrap};
}

} // namespace
} // namespace zelvatone
