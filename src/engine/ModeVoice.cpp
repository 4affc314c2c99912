#include "engine/ModeVoice.h"

#include "engine/WaveTable.h"

#include <algorithm>
#include <cmath>
#include <numbers>

// The reference renderer: one mode after the other, one sample after the other, every rounding in
// its place. Loops take `i` for a mode.

namespace zelvatone {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kTwoPi = 2.0 * kPi;
// The nearest float to 2 pi. Phases far outside the cycle wrap by it, phases near it by kTwoPi:
// the two differ in the last bit, and the sound is defined with both.
constexpr double kTwoPiAsFloat = 6.2831854820251465;

// Moves `value` one step towards `target` and stops it there. A step that points away from the
// target keeps going: the next shift recomputes it.
void glideValue(float& value, float target, float& step) {
    if (value == target) {
        return;
    }
    const bool wasAbove = target < value;
    value += step;
    const bool isAbove = target < value;
    if (wasAbove != isAbove || value == target) {
        value = target;
        step = 0.0F;
    }
}

float wrapPhase(float phase) {
    if (!(phase > -kTwoPi && phase < 2.0 * kTwoPi)) { // NaN wraps here too
        return static_cast<float>(std::fmod(static_cast<double>(phase), kTwoPiAsFloat));
    }
    if (phase < 0.0F) {
        return static_cast<float>(phase + kTwoPi);
    }
    if (phase > kTwoPi) { // exactly one cycle is kept
        return static_cast<float>(phase - kTwoPi);
    }
    return phase;
}

} // namespace

ModeVoice::ModeVoice(const VoiceSettings* settings) : settings(settings) {
    ensureCapacity(kMaxModeCount);
}

void ModeVoice::ensureCapacity(std::int32_t count) {
    if (capacity >= count) {
        return;
    }
    for (ModeArray* array : {&amp, &freq, &phase, &ampStep, &freqStep, &targetAmp, &targetFreq}) {
        array->assign(static_cast<std::size_t>(count), 0.0F);
    }
    capacity = count;
}

void ModeVoice::start(float frequency) {
    beginNote(frequency);
    computeTargets(activeCount);
    normaliseTargets(activeCount);
    standOnTargets();
}

void ModeVoice::forgetLastNote() {
    activeCount = 0;
    targetCount = 0;
    // What standOnTargets leaves.
    for (ModeArray* array : {&ampStep, &freqStep, &targetAmp, &targetFreq}) {
        std::fill(array->begin(), array->end(), 0.0F);
    }
}

void ModeVoice::beginNote(float frequency) {
    time = 0.0F;
    baseFreq = frequency;
    activeCount = std::clamp(settings->initialModes, 0, kMaxModeCount);
    targetCount = activeCount;
    reportedModes.clear();
}

void ModeVoice::standOnTargets() {
    // Steps, and the targets of modes that do not start, keep what the slot's last note left.
    std::fill_n(amp.begin(), kMaxModeCount, 0.0F);
    std::fill_n(freq.begin(), kMaxModeCount, 0.0F);
    std::fill_n(phase.begin(), kMaxModeCount, 0.0F);
    std::copy_n(targetAmp.begin(), activeCount, amp.begin());
    std::copy_n(targetFreq.begin(), activeCount, freq.begin());
}

float ModeVoice::tick() {
    const float out = gain * sumModes();
    update();
    advance();
    time = static_cast<float>(time + settings->secondsPerSample);
    return out;
}

float ModeVoice::sumModes() {
    const wavetable::Readout readout(*settings);
    float sum = 0.0F;
    for (std::int32_t i = 0; i < activeCount; ++i) {
        const std::int32_t index = wavetable::lookup(readout, phase[i]);
        if (index != wavetable::kNoEntry) {
            sum += amp[i] * settings->table[index];
        } else {
            reportFailedLookup(i);
        }
    }
    return sum;
}

// Once for each mode of a note: a mode that has lost its place in the wave mostly stays lost, and a
// line a sample would fill the user's disk.
void ModeVoice::reportFailedLookup(std::int32_t mode) {
    if (!reportedModes.test(mode)) {
        reportedModes.set(mode);
        wavetable::printFailedLookup(wavetable::Readout(*settings), phase[mode]);
    }
}

void ModeVoice::update() {
    glide();
    trim();
    if (shiftIsDue(time)) {
        shift();
    }
}

void ModeVoice::glide() {
    for (std::int32_t i = 0; i < activeCount; ++i) {
        glideValue(amp[i], targetAmp[i], ampStep[i]);
        glideValue(freq[i], targetFreq[i], freqStep[i]);
    }
}

void ModeVoice::trim() {
    while (activeCount > 0 && amp[activeCount - 1] == 0.0F && targetAmp[activeCount - 1] == 0.0F) {
        --activeCount;
    }
}

float ModeVoice::shiftPeriod() const {
    const auto beats = static_cast<float>(settings->shiftBeats);
    return static_cast<float>(beats / (settings->tempo / 60.0));
}

// Whether the next sample reaches a multiple of the shift period. The voice's own float clock
// decides, so its rounding is part of the rhythm. A period that is 0, negative or NaN
// is due at every sample, an infinite one never.
bool ModeVoice::shiftIsDue(float seconds) const {
    const float period = shiftPeriod();
    const float sinceShift = std::fmod(seconds, period);
    return !(sinceShift + settings->secondsPerSample <= period);
}

std::int32_t ModeVoice::nextModeCount() const {
    std::int32_t count = targetCount + settings->modeShift;
    count = std::max(count, settings->minModes);
    count = std::min(count, settings->maxModes); // last, so "Max Modes" wins over "Min Modes"
    return std::clamp(count, 0, kMaxModeCount);  // settings read from a NaN parameter
}

void ModeVoice::shift() {
    const std::int32_t count = nextModeCount();
    computeTargets(count);
    normaliseTargets(count);
    glideToTargets(count);
}

void ModeVoice::glideToTargets(std::int32_t count) {
    if (activeCount < count) {
        admitModes(count);
        computeSteps(count);
    } else {
        if (count < targetCount) {
            dismissModes(count);
        }
        // Between the old target count and a larger new one, modes that are still fading take the
        // new targets but keep their steps.
        computeSteps(targetCount);
    }
    targetCount = count;
}

// Modes that enter start silent, "Exit Peel" away from their target frequency.
void ModeVoice::admitModes(std::int32_t count) {
    for (std::int32_t i = activeCount; i < count; ++i) {
        freq[i] = static_cast<float>((1.0 - settings->exitPeel) * targetFreq[i]);
    }
    activeCount = count;
}

// Modes that leave fade out while they slide by the factor 1 + "Exit Peel".
void ModeVoice::dismissModes(std::int32_t count) {
    for (std::int32_t i = count; i < targetCount; ++i) {
        targetAmp[i] = 0.0F;
        targetFreq[i] = static_cast<float>((settings->exitPeel + 1.0) * freq[i]);
    }
}

// All modes reach their targets together, after "Blend Time".
void ModeVoice::computeSteps(std::int32_t count) {
    const auto blendSamples =
        static_cast<float>(settings->blendSeconds / settings->secondsPerSample);
    for (std::int32_t i = 0; i < count; ++i) {
        ampStep[i] = (targetAmp[i] - amp[i]) / blendSamples;
        freqStep[i] = (targetFreq[i] - freq[i]) / blendSamples;
    }
}

void ModeVoice::advance() {
    // Pitch bend scales how fast phases turn and leaves the frequencies alone.
    const auto radiansPerHz =
        static_cast<float>(2.0 * settings->secondsPerSample * kPi * settings->bendRatio);
    for (std::int32_t i = 0; i < activeCount; ++i) {
        phase[i] = wrapPhase(freq[i] * radiansPerHz + phase[i]);
        dropFrequency(i);
    }
}

// "Freq Drop" multiplies frequencies sample by sample. With "Drop Mod" below 2 it takes every mode,
// also in mid-glide; from 2 on it takes the second mode and every "Drop Mod"-th after it, while
// they do not glide.
void ModeVoice::dropFrequency(std::int32_t mode) {
    const std::int32_t modulus = settings->dropModulus;
    if (modulus < 2 || (mode % modulus == 1 && freqStep[mode] == 0.0F)) {
        freq[mode] *= settings->dropFactor;
    }
}

} // namespace zelvatone
