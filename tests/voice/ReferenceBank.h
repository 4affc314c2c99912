// A slow twin of the voice for the sine wave, in double precision: no table, no wrapped phases, and
// beside every value a bound for how far single precision may stray from it. Only the note's clock
// is kept in float, because its rounding decides when the modes shift.
//
// The bounds add up the worst case. With u = 2^-24, a float result is off by up to u of its size;
// errors of the inputs pass through each sum, product and quotient as usual. Two conditions keep
// them true: no glide is so slow that its step drowns in the rounding of the value, and no phase
// turns by half a cycle or more in a sample.
#pragma once

#include "engine/VoiceSettings.h"

#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

namespace zelvatone {

constexpr double kRoundoff = 0x1p-24;

// A number and how far its float twin may be away from it.
struct Bounded {
    double value = 0.0;
    double error = 0.0;

    void set(double newValue, double newError) {
        value = newValue;
        error = newError;
    }
    // The float twin has rounded: `times` roundings of relative size u.
    void rounded(double times = 1.0) { error += times * kRoundoff * std::fabs(value); }
};

struct ReferenceValue {
    Bounded now;
    Bounded target;
    Bounded step;
    bool arrives = false; // in this sample

    void standOnTarget() {
        now = target;
        step.set(0.0, 0.0);
    }

    void aimSteps(double samples) {
        const double difference = target.value - now.value;
        // Where the twin stands on its target, as this does, its step is 0 too.
        const double error = difference == 0.0 ? 0.0 : (target.error + now.error) / samples;
        step.set(difference / samples, error);
        step.rounded(3.0); // the difference, the number of samples, the quotient
    }

    void glide() {
        arrives = false;
        if (now.value == target.value) {
            now.error = target.error; // the twin arrived now or one sample ago
            return;
        }
        const bool below = now.value < target.value;
        now.set(now.value + step.value, now.error + step.error);
        now.rounded();
        if (now.value == target.value || below != (now.value < target.value)) {
            now.value = target.value;
            now.error += target.error;
            step.set(0.0, 0.0);
            arrives = true;
        }
    }
};

struct ReferenceMode {
    ReferenceValue amp;
    ReferenceValue freq;
    Bounded phase; // radians, ever growing
};

class ReferenceBank {
public:
    explicit ReferenceBank(const VoiceSettings& settings) : settings(settings), modes(100) {}

    void start(double frequency) {
        base_ = frequency;
        clock_ = 0.0F;
        active = wanted = settings.initialModes;
        layOut(active);
        for (int i = 0; i < active; ++i) {
            modes[i].amp.standOnTarget();
            modes[i].freq.standOnTarget();
        }
    }

    // This sample's output with its bound.
    Bounded tick() {
        const Bounded out = sum();
        for (int i = 0; i < active; ++i) {
            modes[i].amp.glide();
            modes[i].freq.glide();
        }
        while (active > 0 && isSilent(modes[active - 1])) {
            --active;
        }
        if (shifts()) {
            shift();
        }
        for (int i = 0; i < active; ++i) {
            turn(modes[i]);
            drop(i);
        }
        clock_ = static_cast<float>(clock_ + settings.secondsPerSample);
        return out;
    }

    const VoiceSettings& settings;
    std::vector<ReferenceMode> modes;
    int active = 0;
    int wanted = 0;

private:
    static bool isSilent(const ReferenceMode& mode) {
        return mode.amp.now.value == 0.0 && mode.amp.target.value == 0.0;
    }

    Bounded sum() const {
        // The table gives the nearest entry below, up to one entry away on a slope of 1 or
        // less; the rounding of the index may reach the next entry where it is 2^-12 away.
        const double entry = 2.0 * std::numbers::pi / 1024.0 * (1.0 + 0x1p-12);
        Bounded total;
        double size = 0.0;
        for (int i = 0; i < active; ++i) {
            const Bounded& amp = modes[i].amp.now;
            const Bounded& phase = modes[i].phase;
            total.value += 0.5 * amp.value * std::sin(phase.value);
            total.error += 0.5 * (std::fabs(amp.value) * (entry + phase.error) + amp.error);
            size += 0.5 * std::fabs(amp.value) + amp.error;
        }
        total.error += (active + 3) * kRoundoff * size;
        return total;
    }

    void layOut(int count) {
        const int extras = std::min(settings.primeModes, count);
        double total = 0.0;
        for (int j = 0; j < count; ++j) {
            j < extras ? layOutExtra(j) : layOutHarmonic(j, j - extras + 1);
            total += modes[j].amp.target.value;
        }
        for (int j = 0; j < count && total > 0.0; ++j) {
            Bounded& amp = modes[j].amp.target;
            amp.value /= total;
            amp.set(amp.value, 0.0);
            amp.rounded(count + 8); // the sum of `count` floats, and a few more on either side
        }
    }

    void layOutExtra(int j) {
        constexpr int firstPrimes[] = {2, 3, 5, 7, 11};
        modes[j].freq.target.set(base_ * std::pow(firstPrimes[j], -settings.detune), 0.0);
        modes[j].freq.target.rounded(3.0);
        modes[j].amp.target.set(settings.primePower, 0.0);
    }

    void layOutHarmonic(int j, int k) {
        const double parity = settings.parity;
        const bool even = k % 2 == 0;
        const double thinning = even ? std::min(1.0, 1.0 - parity) : std::min(1.0, 1.0 + parity);
        modes[j].amp.target.set(std::pow(k, settings.falloff) * thinning, 0.0);
        const double jitter = k == 1 ? 0.0 : (even ? 1.0 : -1.0) * settings.jitterHz;
        Bounded& freq = modes[j].freq.target;
        freq.set(k * base_ + jitter, kRoundoff * k * base_);
        freq.rounded();
    }

    bool shifts() const {
        const auto period =
            static_cast<float>(static_cast<float>(settings.shiftBeats) * 60.0 / settings.tempo);
        const double into = std::remainder(clock_ - 0.5 * period, period) + 0.5 * period;
        return into + settings.secondsPerSample > period;
    }

    void shift() {
        const int count =
            std::min(std::max(wanted + settings.modeShift, settings.minModes), settings.maxModes);
        layOut(count);
        int stepped = wanted;
        if (count > active) {
            for (int i = active; i < count; ++i) {
                scaleInto(modes[i].freq.now, modes[i].freq.target, 1.0 - settings.exitPeel);
            }
            active = stepped = count;
        } else {
            for (int i = count; i < wanted; ++i) {
                modes[i].amp.target.set(0.0, 0.0);
                scaleInto(modes[i].freq.target, modes[i].freq.now, 1.0 + settings.exitPeel);
            }
        }
        wanted = count;
        for (int i = 0; i < stepped; ++i) {
            modes[i].amp.aimSteps(settings.blendSeconds / settings.secondsPerSample);
            modes[i].freq.aimSteps(settings.blendSeconds / settings.secondsPerSample);
        }
    }

    static void scaleInto(Bounded& to, const Bounded& from, double factor) {
        to.set(factor * from.value, std::fabs(factor) * from.error);
        if (factor != 1.0) {
            to.rounded();
        }
    }

    void turn(ReferenceMode& mode) const {
        const double perHertz =
            2.0 * std::numbers::pi * settings.secondsPerSample * settings.bendRatio;
        const Bounded& freq = mode.freq.now;
        const double turned = freq.value * perHertz;
        mode.phase.value += turned;
        mode.phase.error += freq.error * perHertz + 2.0 * kRoundoff * std::fabs(turned);
        // Below 16 radians the sum rounds by up to 2^-21, and its wrap below 8 by up to 2^-22.
        mode.phase.error += 0x1p-21 + 0x1p-22;
    }

    void drop(int i) {
        const double factor = settings.dropFactor;
        ReferenceValue& freq = modes[i].freq;
        const int modulus = settings.dropModulus;
        if (factor == 1.0 || (modulus >= 2 && (i % modulus != 1 || freq.step.value != 0.0))) {
            return;
        }
        freq.now.set(freq.now.value * factor, freq.now.error * factor);
        freq.now.rounded();
        if (freq.arrives) { // the twin may have arrived a sample apart: one factor more or less
            freq.now.error += std::fabs((1.0 - factor) * freq.now.value);
        }
    }

    double base_ = 0.0;
    float clock_ = 0.0F;
};

} // namespace zelvatone
