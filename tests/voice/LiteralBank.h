// A second telling of the voice in single precision: one mode a record, one rule a function, slow,
// and meant for reading. Its twin must agree in every bit. Each arithmetic step that rounds stands
// on a line of its own, with the type that it rounds to.
#pragma once

#include "engine/VoiceSettings.h"

#include <array>
#include <cmath>

namespace zelvatone {

struct LiteralMode {
    float amp = 0.0F;
    float freq = 0.0F;
    float phase = 0.0F;
    float ampStep = 0.0F;
    float freqStep = 0.0F;
    float targetAmp = 0.0F;
    float targetFreq = 0.0F;
};

class LiteralBank {
public:
    explicit LiteralBank(const VoiceSettings& settings) : s_(settings) {}

    void start(float frequency) {
        time = 0.0F;
        base_ = frequency;
        active = s_.initialModes;
        wanted = active;
        layOut(active);
        for (int i = 0; i < 100; ++i) {
            LiteralMode& m = modes[i];
            m.amp = i < active ? m.targetAmp : 0.0F;
            m.freq = i < active ? m.targetFreq : 0.0F;
            m.phase = 0.0F;
        }
    }

    float tick() {
        float sum = 0.0F;
        for (int i = 0; i < active; ++i) {
            const float share = modes[i].amp * entryAt(modes[i].phase);
            sum = sum + share;
        }
        for (int i = 0; i < active; ++i) {
            glide(modes[i].amp, modes[i].targetAmp, modes[i].ampStep);
            glide(modes[i].freq, modes[i].targetFreq, modes[i].freqStep);
        }
        while (active > 0 && modes[active - 1].amp == 0.0F && modes[active - 1].targetAmp == 0.0F) {
            active = active - 1;
        }
        shiftIfDue();
        for (int i = 0; i < active; ++i) {
            turn(modes[i]);
            drop(i);
        }
        const double next = static_cast<double>(time) + s_.secondsPerSample;
        time = static_cast<float>(next);
        return 0.5F * sum;
    }

    std::array<LiteralMode, 100> modes;
    int active = 0;
    int wanted = 0;
    float time = 0.0F;

private:
    static float powerOf(int k, float exponent) {
        const double power = std::pow(static_cast<double>(k), static_cast<double>(exponent));
        return static_cast<float>(power);
    }

    void layOut(int count) {
        const int extras = s_.primeModes < count ? s_.primeModes : count;
        for (int j = 0; j < extras; ++j) {
            constexpr int primes[] = {2, 3, 5, 7, 11};
            const float ratio = powerOf(primes[j], s_.detune);
            modes[j].targetFreq = base_ / ratio;
            modes[j].targetAmp = s_.primePower;
        }
        for (int k = 1; extras + k - 1 < count; ++k) {
            layOutHarmonic(modes[extras + k - 1], k);
        }
        float total = 0.0F;
        for (int j = 0; j < count; ++j) {
            total = total + modes[j].targetAmp;
        }
        if (total > 0.0F) {
            for (int j = 0; j < count; ++j) {
                modes[j].targetAmp = modes[j].targetAmp / total;
            }
        }
    }

    void layOutHarmonic(LiteralMode& m, int k) const {
        const auto parity = static_cast<double>(s_.parity);
        const float oddFactor = parity + 1.0 < 1.0 ? static_cast<float>(parity + 1.0) : 1.0F;
        const float evenFactor = 1.0 - parity < 1.0 ? static_cast<float>(1.0 - parity) : 1.0F;
        const auto number = static_cast<float>(k);
        m.targetFreq = number * base_;
        m.targetAmp = powerOf(k, s_.falloff);
        if (k % 2 == 0) {
            m.targetAmp = m.targetAmp * evenFactor;
            m.targetFreq = m.targetFreq + s_.jitterHz;
        } else if (k == 1) {
            m.targetAmp = m.targetAmp * oddFactor;
        } else {
            m.targetAmp = m.targetAmp * oddFactor;
            m.targetFreq = m.targetFreq - s_.jitterHz;
        }
    }

    float entryAt(float phase) const {
        const float used = s_.chop * 1024.0F;
        const auto length = static_cast<int>(used);
        const double exactScale = length / 6.283185307179586;
        const auto scale = static_cast<float>(exactScale);
        const float place = scale * phase;
        int index = static_cast<int>(place);
        if (index < 0) {
            index = index + length;
        }
        return s_.table[index == length ? 0 : index];
    }

    static void glide(float& value, float target, float& step) {
        if (value != target) {
            const float old = value;
            value = old + step;
            const bool passedUp = !(target < old) && target < value;
            const bool passedDown = target < old && !(target < value);
            if (passedUp || passedDown || value == target) {
                value = target;
                step = 0.0F;
            }
        }
    }

    void shiftIfDue() {
        const auto beats = static_cast<float>(s_.shiftBeats);
        const double beatsPerSecond = s_.tempo / 60.0;
        const double exactPeriod = static_cast<double>(beats) / beatsPerSecond;
        const auto period = static_cast<float>(exactPeriod);
        const double exactRest = std::fmod(static_cast<double>(time), static_cast<double>(period));
        const auto rest = static_cast<float>(exactRest);
        const double next = static_cast<double>(rest) + s_.secondsPerSample;
        if (next <= static_cast<double>(period)) {
            return;
        }
        int count = wanted + s_.modeShift;
        if (count < s_.minModes) {
            count = s_.minModes;
        }
        if (count > s_.maxModes) {
            count = s_.maxModes;
        }
        moveTo(count);
    }

    void moveTo(int count) {
        layOut(count);
        const auto peel = static_cast<double>(s_.exitPeel);
        if (active < count) {
            for (int j = active; j < count; ++j) {
                const double from = (1.0 - peel) * static_cast<double>(modes[j].targetFreq);
                modes[j].freq = static_cast<float>(from);
            }
            active = count;
            wanted = count;
        } else if (count < wanted) {
            for (int j = count; j < wanted; ++j) {
                modes[j].targetAmp = 0.0F;
                const double to = (peel + 1.0) * static_cast<double>(modes[j].freq);
                modes[j].targetFreq = static_cast<float>(to);
            }
        }
        setSteps(wanted);
        wanted = count;
    }

    void setSteps(int count) {
        const double exactBlend = s_.blendSeconds / s_.secondsPerSample;
        const auto blend = static_cast<float>(exactBlend);
        for (int i = 0; i < count; ++i) {
            const float ampWay = modes[i].targetAmp - modes[i].amp;
            modes[i].ampStep = ampWay / blend;
            const float freqWay = modes[i].targetFreq - modes[i].freq;
            modes[i].freqStep = freqWay / blend;
        }
    }

    void turn(LiteralMode& m) const {
        const double exactIncrement = 2.0 * s_.secondsPerSample * 3.141592653589793 * s_.bendRatio;
        const auto increment = static_cast<float>(exactIncrement);
        const float turned = m.freq * increment;
        const float phase = turned + m.phase;
        const auto wide = static_cast<double>(phase);
        if (wide > -6.283185307179586 && wide < 12.566370614359172) {
            const double up = wide < 0.0 ? wide + 6.283185307179586 : wide;
            const double down = wide > 6.283185307179586 ? wide - 6.283185307179586 : up;
            m.phase = static_cast<float>(down);
        } else {
            const double rest = std::fmod(wide, 6.2831854820251465);
            m.phase = static_cast<float>(rest);
        }
    }

    void drop(int i) {
        const bool chosen =
            s_.dropModulus < 2 || (i % s_.dropModulus == 1 && modes[i].freqStep == 0.0F);
        if (chosen) {
            modes[i].freq = modes[i].freq * s_.dropFactor;
        }
    }

    const VoiceSettings& s_;
    float base_ = 0.0F;
};

} // namespace zelvatone
