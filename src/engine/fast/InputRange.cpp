#include "engine/fast/InputRange.h"

#include <cmath>

namespace zelvatone {

namespace {

// False for NaN.
bool isWithin(double value, double lowest, double highest) {
    return value >= lowest && value <= highest;
}

bool isWithin(double value, double limit) {
    return std::fabs(value) <= limit;
}

} // namespace

bool isInFastRange(const VoiceSettings& settings) {
    const double blendSamples = settings.blendSeconds / settings.secondsPerSample;
    return isWithin(settings.secondsPerSample, 1e-7, 1e-3) &&
           isWithin(settings.bendRatio, 0.1, 10.0) &&
           // Steps of a sensible size: a shift at every sample then needs many to raise anything.
           isWithin(blendSamples, 32.0, 1e9) && isWithin(settings.exitPeel, 16.0) &&
           isWithin(settings.dropFactor, 0.9, 1.1) && isWithin(settings.falloff, -8.0, 4.0) &&
           isWithin(settings.parity, 1e3) && isWithin(settings.jitterHz, 1e6) &&
           isWithin(settings.detune, -2.0, 8.0) && isWithin(settings.primePower, 1e6);
}

bool isInFastRange(const EnvelopeSettings& settings) {
    return isWithin(settings.attack, 1e9) && isWithin(settings.decay, 1e9) &&
           isWithin(settings.sustain, 1e9) && isWithin(settings.release, 1e9);
}

bool isInFastRange(const ModeVoice& voice) {
    return voice.activeCount >= 0 && voice.activeCount <= kMaxModeCount &&
           isWithin(voice.baseFreq, 1e6) && isWithin(voice.gain, 1e6) &&
           isWithin(voice.time, 0.0, 1e9);
}

bool isInFastRange(const ADSR& envelope) {
    return isWithin(envelope.level, 1e9) && isWithin(envelope.velocity, 1e9) &&
           isWithin(envelope.time, 0.0, 1e9);
}

} // namespace zelvatone
