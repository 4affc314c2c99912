// How loud a sound is to the ear, by EBU R 128.
#pragma once

#include <span>

namespace zelvatone {

struct Loudness {
    double lufs = 0.0;             // of the whole sound; -infinity for silence
    double truePeakDecibels = 0.0; // between samples too; -infinity for silence
};

// `samples`: full scale 1, finite, channels interleaved, one or two of them; one counts as played
// on both loudspeakers. `sampleRate` in Hz.
Loudness loudnessOf(std::span<const float> samples, int channels, int sampleRate);

// The gain in dB that brings a sound to `lufs`, or less where its true peak would pass
// `peakDecibels`. 0 for silence.
double levellingGain(const Loudness& loudness, double lufs, double peakDecibels);

} // namespace zelvatone
