// Looking at a bank once, so that its samples need not look again.
#pragma once

#include "engine/fast/ModeKernel.h"
#include "engine/fast/kernel/Gliding.h"
#include "engine/fast/kernel/Wrapping.h"

namespace zelvatone {
namespace {

// What can be true of a lane, one bit each.
enum Sight : std::int32_t {
    kOdd = 1,            // not a number, or out of all proportion
    kRestless = 2,       // not on its targets
    kLoudnessGlides = 4, // the amplitude
    kGlides = 8,         // the frequency
    kDrops = 16,         // the drop changes the frequency
    kMayDrop = 32,       // the drop takes this mode, now or once its glide is over
    kDropFreesStep = 64, // it takes it while a step is left over
    kBackwards = 128,    // a negative phase or turning
    kWholeTurns = 256,   // 2 pi a sample, or close to it
    kOnTheBrink = 512,   // too close below 4 pi for the far wrap's rounding
    kHuge = 1024         // may turn further than vectors can wrap
};

// No value of a bank comes near it in a calm life, and nothing below it can overflow in a run.
constexpr float kSaneLimit = 1.0e9F;
// Below 2 pi by more than a run of rounded glide steps can add.
constexpr float kNearlyOneTurn = 6.28F;
// Leaves room for the phase that it is added to.
constexpr float kHugeTurning = kWidestPhase - 2.0F * kTurn;

ZELVATONE_INLINE Ints sight(Ints mask, Sight what) {
    return mask & static_cast<std::int32_t>(what);
}

ZELVATONE_INLINE Ints isOdd(Floats v, float limit = kSaneLimit) {
    return ~(absolute(v) <= limit); // also for NaN
}

// The active lanes of one vector of modes.
struct Scene {
    ZELVATONE_INLINE Scene(const ModeBank& bank, std::int32_t first)
        : bank(bank), first(first), active(lanesBelow(bank.count, first)) {}

    ZELVATONE_INLINE Floats read(const float* array) const {
        return keep(active, load(array + first));
    }

    const ModeBank& bank;
    std::int32_t first;
    Ints active;
};

// How the turning of a lane matters, with frequencies from `lowest` to `highest`.
ZELVATONE_INLINE Ints seeTurning(Floats lowest, Floats highest, const Motion& motion) {
    const Floats slow = lowest * motion.radiansPerHz;
    const Floats fast = highest * (motion.radiansPerHz * motion.dropGrowth);
    return sight(bits(lowest) < 0, kBackwards) | sight(fast >= kNearlyOneTurn, kWholeTurns) |
           sight((fast > 2.0F * kNearlyOneTurn) & (slow < 2.0F * kTurn), kOnTheBrink);
}

ZELVATONE_INLINE Ints seeHuge(Floats size, const Motion& motion) {
    return sight(size * (motion.radiansPerHz * motion.dropGrowth) > kHugeTurning, kHuge);
}

// The first look. If it finds all values on their targets there is nothing else to see, unless
// frequencies drop.
ZELVATONE_INLINE Ints glance(const Scene& scene, const Motion& motion) {
    const Floats amp = scene.read(scene.bank.amp);
    const Floats freq = scene.read(scene.bank.freq);
    const Floats phase = scene.read(scene.bank.phase);
    const Ints restless =
        (amp != scene.read(scene.bank.targetAmp)) | (freq != scene.read(scene.bank.targetFreq));
    return sight(isOdd(amp) | isOdd(freq) | isOdd(phase, kTurn), kOdd) |
           sight(restless, kRestless) | sight(bits(phase) < 0, kBackwards) |
           seeTurning(freq, freq, motion) | seeHuge(absolute(freq), motion);
}

ZELVATONE_INLINE Ints seeLoudness(const Scene& scene) {
    const Floats amp = scene.read(scene.bank.amp);
    const Floats target = scene.read(scene.bank.targetAmp);
    const Floats step = scene.read(scene.bank.ampStep);
    return sight(isOdd(target) | isOdd(step), kOdd) |
           sight(glides(amp, target, step), kLoudnessGlides);
}

ZELVATONE_INLINE Ints seeFrequency(const Scene& scene, const Motion& motion, std::int32_t samples) {
    const Floats freq = scene.read(scene.bank.freq);
    const Floats target = scene.read(scene.bank.targetFreq);
    const Floats step = scene.read(scene.bank.freqStep);
    const Floats factor = load(motion.dropFactors + scene.first);
    const Ints mayDrop = factor != 1.0F;
    // How far a glide can go. A step that is rounded to the frequency's last place counts for up to
    // twice its size.
    const Glide glide = planGlide(freq, target, step);
    const Floats end = bounded(freq + glide.step * static_cast<float>(2 * samples), glide);
    const Floats lowest = end < freq ? end : freq;
    const Floats highest = end < freq ? freq : end;
    return sight(isOdd(target) | isOdd(step), kOdd) | sight(glides(freq, target, step), kGlides) |
           sight(bits(freq * factor) != bits(freq), kDrops) | sight(mayDrop, kMayDrop) |
           sight(mayDrop & (step != 0.0F), kDropFreesStep) | seeTurning(lowest, highest, motion) |
           seeHuge(absolute(lowest) + absolute(highest) + absolute(target), motion);
}

// All sights of all lanes.
std::int32_t look(const ModeBank& bank, const Motion& motion, std::int32_t samples) {
    Ints seen{};
    for (std::int32_t first = 0; first < bank.count; first += kLanes) {
        seen |= glance({bank, first}, motion);
    }
    if (motion.drops || (anyLane(seen) & kRestless) != 0) {
        for (std::int32_t first = 0; first < bank.count; first += kLanes) {
            const Scene scene(bank, first);
            seen |= seeLoudness(scene) | seeFrequency(scene, motion, samples);
        }
    }
    return anyLane(seen);
}

Course courseOf(std::int32_t seen) {
    if ((seen & kMayDrop) == 0) {
        return (seen & kGlides) != 0 ? Course::kGlide : Course::kStill;
    }
    if ((seen & (kGlides | kDropFreesStep)) != 0) {
        return Course::kGlideAndDrop;
    }
    return (seen & kDrops) != 0 ? Course::kDrop : Course::kStill;
}

Wrap wrapOf(std::int32_t seen, Course course) {
    if ((seen & kBackwards) != 0 || course == Course::kGlideAndDrop) {
        return Wrap::kAny;
    }
    if ((seen & kWholeTurns) == 0) {
        return Wrap::kNear;
    }
    return course == Course::kStill && (seen & kOnTheBrink) == 0 ? Wrap::kFar : Wrap::kAny;
}

Outlook foresee(const ModeBank& bank, const Motion& motion, std::int32_t samples) {
    const std::int32_t seen = look(bank, motion, samples);
    const Course course = courseOf(seen);
    return {.calm = (seen & kOdd) == 0,
            .huge = (seen & kHuge) != 0,
            .loudnessMoves = (seen & kLoudnessGlides) != 0,
            .course = course,
            .wrap = wrapOf(seen, course)};
}

} // namespace
} // namespace zelvatone
