#include "engine/fast/InputRange.h"

#include <cmath>

// Every limit is far beyond what knobs, notes and hosts can set and still keeps the values of a run
// finite: floats end at 3.4e38.

namespace zelvatone {

namespace {

// False for NaN.
bool isWithin(double value, double lowest, double highest) {
    return value >= lowest && value <= highest;
}

bool isWithin(double value, double limit) {
    return std::fabs(value) <= limit;
}

// Sample rates from 1 kHz to 10 MHz. Clocks count forwards, so a sample has a length.
constexpr double kShortestSample = 1.0e-7;
constexpr double kLongestSample = 1.0e-3;
// The wheel bends by an octave, to 0.5 or 2.
constexpr double kLowestBend = 0.1;
constexpr double kHighestBend = 10.0;
// "Exit Peel" ends at 5. A mode's target is then at most this and one times its frequency, ...
constexpr double kLargestPeel = 16.0;
// ... and a blend of so many samples ("Blend Time" begins at 0.01 s, 80 samples at 8 kHz) goes a
// 32nd of the way there in each: with a shift at every sample, frequencies grow by half in a sample
// and to 2e11 times their value in a run.
constexpr double kShortestBlend = 32.0;
// "Blend Time" ends at a second. Differences are divided by it in single precision.
constexpr double kLongestBlend = 1.0e9;
// "Freq Drop" ends at 1 per cent a sample. 10 per cent make 450 times the frequency in a run.
constexpr double kLowestDrop = 0.9;
constexpr double kHighestDrop = 1.1;
// "Falloff" goes from -3 to 0. These make amplitudes of 1e-16 to 1e8 for the hundredth harmonic.
constexpr double kLowestFalloff = -8.0;
constexpr double kHighestFalloff = 4.0;
// "Parity" ends at 1. It scales amplitudes.
constexpr double kLargestParity = 1.0e3;
// "Jitter" ends at 100 Hz. Added to a harmonic it stays within what a kernel takes, 1e9 Hz.
constexpr double kLargestJitter = 1.0e6;
// "Detune" goes from 0.25 to 2. The largest prime, 97, to these powers makes 1e-4 to 8e15.
constexpr double kLowestDetune = -2.0;
constexpr double kHighestDetune = 8.0;
// "Power" ends at 2. It is the amplitude of the extra modes before all are scaled to sum 1.
constexpr double kLargestPower = 1.0e6;
// Seconds, or levels from 0 to 1: "Attack" and its like end at 2 s, notes are held for hours. The
// envelope multiplies and divides two of them in double precision, far from its limits.
constexpr double kLargestTime = 1.0e9;
constexpr double kLargestLevel = 1.0e9;
// Note 127 has 12,544 Hz. The hundredth harmonic stays within what a kernel takes, 1e9 Hz.
constexpr double kHighestNote = 1.0e6;
// A voice's gain is 0.5. A hundred modes of an amplitude that a kernel takes, 1e9, come to 1e17.
constexpr double kLargestGain = 1.0e6;

} // namespace

bool isInFastRange(const VoiceSettings& settings) {
    const double blendSamples = settings.blendSeconds / settings.secondsPerSample;
    return isWithin(settings.secondsPerSample, kShortestSample, kLongestSample) &&
           isBendInFastRange(settings.bendRatio) &&
           isWithin(blendSamples, kShortestBlend, kLongestBlend) &&
           isWithin(settings.exitPeel, kLargestPeel) &&
           isWithin(settings.dropFactor, kLowestDrop, kHighestDrop) &&
           isWithin(settings.falloff, kLowestFalloff, kHighestFalloff) &&
           isWithin(settings.parity, kLargestParity) &&
           isWithin(settings.jitterHz, kLargestJitter) &&
           isWithin(settings.detune, kLowestDetune, kHighestDetune) &&
           isWithin(settings.primePower, kLargestPower);
}

bool isBendInFastRange(double ratio) {
    return isWithin(ratio, kLowestBend, kHighestBend);
}

bool isInFastRange(const EnvelopeSettings& settings) {
    return isWithin(settings.attack, kLargestTime) && isWithin(settings.decay, kLargestTime) &&
           isWithin(settings.sustain, kLargestLevel) && isWithin(settings.release, kLargestTime);
}

bool isInFastRange(const ModeVoice& voice) {
    return voice.activeCount >= 0 && voice.activeCount <= kMaxModeCount &&
           isWithin(voice.baseFreq, kHighestNote) && isWithin(voice.gain, kLargestGain) &&
           isWithin(voice.time, 0.0, kLargestTime);
}

bool isInFastRange(const ADSR& envelope) {
    return isWithin(envelope.level, kLargestLevel) && isWithin(envelope.velocity, kLargestLevel) &&
           isWithin(envelope.time, 0.0, kLargestTime);
}

} // namespace zelvatone
