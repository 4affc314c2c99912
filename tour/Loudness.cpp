#include "tour/Loudness.h"

#include "host/audio/LoudnessMeter.h"
#include "host/audio/TruePeak.h"

#include <algorithm>
#include <cmath>

namespace zelvatone {

Loudness loudnessOf(std::span<const float> samples, int channels, int sampleRate) {
    LoudnessMeter meter(channels, sampleRate);
    meter.measure(samples);
    Loudness loudness;
    // From two loudspeakers, one channel has twice the power.
    loudness.lufs = meter.integrated() + (channels == 1 ? 10.0 * std::log10(2.0) : 0.0);
    loudness.truePeakDecibels = 20.0 * std::log10(truePeakOf(samples, channels, sampleRate));
    return loudness;
}

double levellingGain(const Loudness& loudness, double lufs, double peakDecibels) {
    if (!std::isfinite(loudness.lufs)) {
        return 0.0;
    }
    return std::min(lufs - loudness.lufs, peakDecibels - loudness.truePeakDecibels);
}

} // namespace zelvatone
