// Analyses a bank once for a whole run, so that its samples need no comparisons.
#pragma once

#include "engine/fast/ModeKernel.h"
#include "engine/fast/kernel/Gliding.h"
#include "engine/fast/kernel/Wrapping.h"

namespace zelvatone {
namespace {

// What can be true of a lane, one bit each.
enum LaneFlag : std::int32_t {
    kOutOfRange = 1,     // not a number, or outside the input range
    kOffTarget = 2,      // not on its targets
    kLoudnessGlides = 4, // the amplitude
    kGlides = 8,         // the frequency
    kDrops = 16,         // the drop changes the frequency
    kMayDrop = 32,       // the drop takes this mode, now or once its glide is over
    kDropFreesStep = 64, // it takes it while a step is left over
    kBackwards = 128,    // a negative phase or turning
    kWholeTurns = 256,   // 2 pi a sample, or close to it
    kNearTwoTurns = 512, // too close below 4 pi for the far wrap's rounding
    kPhaseTooFast = 1024 // may turn further than vectors can wrap
};

// No value of a bank comes near it in normal operation, and nothing below it can overflow in a run.
constexpr float kLargestValue = 1.0e9F;
// Below 2 pi by more than a run of rounded glide steps can add.
constexpr float kNearlyOneTurn = 6.28F;
// Leaves room for the phase that it is added to.
constexpr float kLargestTurning = kWidestPhase - 2.0F * kTurn;

ZELVATONE_INLINE Ints flagIf(Ints mask, LaneFlag what) {
    return mask & static_cast<std::int32_t>(what);
}

ZELVATONE_INLINE Ints isOutOfRange(Floats v, float limit = kLargestValue) {
    return ~(absolute(v) <= limit); // also for NaN
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

// How the turning of a lane matters, with frequencies from `lowest` to `highest`.
ZELVATONE_INLINE Ints analyseTurning(Floats lowest, Floats highest,
                                     const BlockConstants& constants) {
    const Floats slow = lowest * constants.radiansPerHz;
    const Floats fast = highest * (constants.radiansPerHz * constants.dropGrowth);
    return flagIf(bits(lowest) < 0, kBackwards) | flagIf(fast >= kNearlyOneTurn, kWholeTurns) |
           flagIf((fast > 2.0F * kNearlyOneTurn) & (slow < 2.0F * kTurn), kNearTwoTurns);
}

ZELVATONE_INLINE Ints analyseSpeed(Floats size, const BlockConstants& constants) {
    return flagIf(size * (constants.radiansPerHz * constants.dropGrowth) > kLargestTurning,
                  kPhaseTooFast);
}

// The first pass. If it finds all values on their targets there is nothing else to find, unless
// frequencies drop.
ZELVATONE_INLINE Ints analyseIdle(const LaneView& view, const BlockConstants& constants) {
    const Floats amp = view.read(view.bank.amp);
    const Floats freq = view.read(view.bank.freq);
    const Floats phase = view.read(view.bank.phase);
    const Ints offTarget =
        (amp != view.read(view.bank.targetAmp)) | (freq != view.read(view.bank.targetFreq));
    return flagIf(isOutOfRange(amp) | isOutOfRange(freq) | isOutOfRange(phase, kTurn),
                  kOutOfRange) |
           flagIf(offTarget, kOffTarget) | flagIf(bits(phase) < 0, kBackwards) |
           analyseTurning(freq, freq, constants) | analyseSpeed(absolute(freq), constants);
}

ZELVATONE_INLINE Ints analyseLoudness(const LaneView& view) {
    const Floats amp = view.read(view.bank.amp);
    const Floats target = view.read(view.bank.targetAmp);
    const Floats step = view.read(view.bank.ampStep);
    return flagIf(isOutOfRange(target) | isOutOfRange(step), kOutOfRange) |
           flagIf(glides(amp, target, step), kLoudnessGlides);
}

ZELVATONE_INLINE Ints analyseFrequency(const LaneView& view, const BlockConstants& constants,
                                       std::int32_t samples) {
    const Floats freq = view.read(view.bank.freq);
    const Floats target = view.read(view.bank.targetFreq);
    const Floats step = view.read(view.bank.freqStep);
    const Floats factor = load(constants.dropFactors + view.first);
    const Ints mayDrop = factor != 1.0F;
    // How far a glide can go. A step that is rounded to the frequency's last place counts for up to
    // twice its size.
    const Glide glide = planGlide(freq, target, step);
    const Floats end = bounded(freq + glide.step * static_cast<float>(2 * samples), glide);
    const Floats lowest = end < freq ? end : freq;
    const Floats highest = end < freq ? freq : end;
    return flagIf(isOutOfRange(target) | isOutOfRange(step), kOutOfRange) |
           flagIf(glides(freq, target, step), kGlides) |
           flagIf(bits(freq * factor) != bits(freq), kDrops) | flagIf(mayDrop, kMayDrop) |
           flagIf(mayDrop & (step != 0.0F), kDropFreesStep) |
           analyseTurning(lowest, highest, constants) |
           analyseSpeed(absolute(lowest) + absolute(highest) + absolute(target), constants);
}

// The flags of all lanes together.
std::int32_t analyseBank(const ModeBank& bank, const BlockConstants& constants,
                         std::int32_t samples) {
    Ints flags{};
    for (std::int32_t first = 0; first < bank.count; first += kLanes) {
        flags |= analyseIdle({bank, first}, constants);
    }
    if (constants.drops || (anyLane(flags) & kOffTarget) != 0) {
        for (std::int32_t first = 0; first < bank.count; first += kLanes) {
            const LaneView view(bank, first);
            flags |= analyseLoudness(view) | analyseFrequency(view, constants, samples);
        }
    }
    return anyLane(flags);
}

FrequencyMotion motionOf(std::int32_t flags) {
    if ((flags & kMayDrop) == 0) {
        return (flags & kGlides) != 0 ? FrequencyMotion::kGlide : FrequencyMotion::kStill;
    }
    if ((flags & (kGlides | kDropFreesStep)) != 0) {
        return FrequencyMotion::kGlideAndDrop;
    }
    return (flags & kDrops) != 0 ? FrequencyMotion::kDrop : FrequencyMotion::kStill;
}

Wrap wrapOf(std::int32_t flags, FrequencyMotion motion) {
    if ((flags & kBackwards) != 0 || motion == FrequencyMotion::kGlideAndDrop) {
        return Wrap::kAny;
    }
    if ((flags & kWholeTurns) == 0) {
        return Wrap::kNear;
    }
    return motion == FrequencyMotion::kStill && (flags & kNearTwoTurns) == 0 ? Wrap::kFar
                                                                             : Wrap::kAny;
}

BankTraits analyse(const ModeBank& bank, const BlockConstants& constants, std::int32_t samples) {
    const std::int32_t flags = analyseBank(bank, constants, samples);
    const FrequencyMotion motion = motionOf(flags);
    return {.inFastRange = (flags & kOutOfRange) == 0,
            .phaseTooFast = (flags & kPhaseTooFast) != 0,
            .loudnessMoves = (flags & kLoudnessGlides) != 0,
            .motion = motion,
            .wrap = wrapOf(flags, motion)};
}

} // namespace
} // namespace zelvatone
