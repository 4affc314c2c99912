// The rules that lay out a set of modes for a note: the harmonic series and the extra, detuned
// modes; and the mode sets that fillModes makes for inspection.
#include "engine/ModePowers.h"
#include "engine/ModeVoice.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <span>

namespace zelvatone {

namespace {

// Summed in index order in single precision: the order is part of the result.
void normalise(std::span<float> amplitudes) {
    float sum = 0.0F;
    for (const float amplitude : amplitudes) {
        sum += amplitude;
    }
    if (sum > 0.0F) { // not for 0, a negative sum or NaN
        for (float& amplitude : amplitudes) {
            amplitude /= sum;
        }
    }
}

} // namespace

// Harmonic k: its slope by "Falloff", its thinning by "Parity", its displacement by "Jitter".
void ModeVoice::shapeHarmonic(std::int32_t k, float& frequency, float& amplitude) const {
    frequency = static_cast<float>(k) * baseFreq;
    amplitude = powerAsFloat(k, settings->falloff);
    if (k % 2 == 0) {
        amplitude *= std::min(static_cast<float>(1.0 - settings->parity), 1.0F);
        frequency += settings->jitterHz;
    } else {
        amplitude *= std::min(static_cast<float>(settings->parity + 1.0), 1.0F);
        if (k > 1) { // the fundamental stays in tune
            frequency -= settings->jitterHz;
        }
    }
}

void ModeVoice::computeTargets(std::int32_t count) {
    // From 0 to 5 as the parameter has it; the bounds are for a NaN parameter.
    const std::int32_t extras = std::clamp(std::min(settings->primeModes, count), 0,
                                           static_cast<std::int32_t>(kPrimes.size()));
    for (std::int32_t j = 0; j < extras; ++j) {
        targetFreq[j] = baseFreq / extraRatio(j, settings->detune);
        targetAmp[j] = settings->primePower;
    }
    for (std::int32_t j = extras; j < count; ++j) {
        shapeHarmonic(j - extras + 1, targetFreq[j], targetAmp[j]);
    }
}

void ModeVoice::normaliseTargets(std::int32_t count) {
    normalise({targetAmp.data(), static_cast<std::size_t>(count)});
}

void ModeVoice::normaliseAmplitudes() {
    normalise({amp.data(), static_cast<std::size_t>(activeCount)});
}

void ModeVoice::fillModes(std::int32_t count) {
    ensureCapacity(count);
    if (count <= 0) {
        std::printf("Warning, calling fillModes() with 0 oscillators...\n");
        return;
    }
    switch (settings->modeKind) {
    case 0:
        fillSingle(count);
        break;
    case 1:
        fillCluster(count);
        break;
    case 2:
        fillHarmonic(count);
        break;
    default:
        std::printf("Unknown mode: %i\n", settings->modeKind);
        break;
    }
    normaliseAmplitudes();
}

void ModeVoice::fillSingle(std::int32_t count) {
    std::fill_n(amp.begin(), count, 0.0F);
    std::fill_n(freq.begin(), count, 0.0F);
    std::fill_n(phase.begin(), count, 0.0F);
    amp[0] = 1.0F;
    freq[0] = baseFreq;
}

// A Gaussian cloud of an odd number of modes, spread evenly around the note.
void ModeVoice::fillCluster(std::int32_t count) {
    const std::int32_t members = count % 2 == 0 ? count - 1 : count;
    amp[count - 1] = 0.0F;
    freq[count - 1] = 0.0F;
    if (members == 1) {
        freq[0] = baseFreq;
        amp[0] = 1.0F;
        return;
    }
    const double width = settings->clusterWidthHz;
    const auto a = static_cast<float>(0.5 / (width * width));
    const auto norm = static_cast<float>(1.0 / (std::sqrt(std::numbers::pi / a) * 0.5));
    const double peak = norm * 0.800000011920929; // the float nearest 0.8: headroom
    const float half = settings->clusterScale * baseFreq + settings->clusterOffsetHz;
    const auto step = static_cast<float>(2.0 * half / (members - 1));
    for (std::int32_t i = 0; i < members; ++i) {
        freq[i] = static_cast<float>(i) * step + (baseFreq - half);
        if (freq[i] < 0.0F) {
            amp[i] = 0.0F;
        }
        if (!(freq[i] >= 0.0F)) { // nothing else is set below zero, nor for NaN
            continue;
        }
        phase[i] = 0.0F;
        const float d = freq[i] - baseFreq;
        const auto bell = static_cast<float>(std::exp(static_cast<double>(-a * d * d)));
        amp[i] = static_cast<float>(bell * peak * step);
        if (freq[i] > 0.0F) {
            amp[i] *= baseFreq / freq[i];
        }
    }
}

// The harmonic series first and the extra modes after it: the reverse of computeTargets.
void ModeVoice::fillHarmonic(std::int32_t count) {
    const std::int32_t harmonics = std::max(count - std::max(settings->primeModes, 0), 0);
    for (std::int32_t i = 0; i < harmonics; ++i) {
        ampStep[i] = 0.0F;
        shapeHarmonic(i + 1, freq[i], amp[i]);
    }
    const auto last = static_cast<std::int32_t>(kPrimes.size());
    for (std::int32_t i = harmonics; i < count && i - harmonics < last; ++i) {
        ampStep[i] = 0.0F;
        freq[i] = baseFreq / extraRatio(i - harmonics, settings->detune);
        amp[i] = settings->primePower;
    }
}

void ModeVoice::dumpModes() const {
    std::printf("p_nosc: %i\n", activeCount);
    for (std::int32_t i = 0; i < activeCount; ++i) {
        std::printf("#%i: freq = %f amp = %f phase = %f at = %f ft = %f\n", i,
                    static_cast<double>(freq[i]), static_cast<double>(amp[i]),
                    static_cast<double>(phase[i]), static_cast<double>(targetAmp[i]),
                    static_cast<double>(targetFreq[i]));
    }
    std::fflush(stdout);
}

} // namespace zelvatone
