// What one look at the samples of a sound finds.
#pragma once

#include <cstdint>
#include <span>

namespace zelvatone {

struct SoundLevel {
    float peak = 0.0F;               // largest magnitude, full scale 1.0
    std::int64_t clippedSamples = 0; // beyond full scale
    std::int64_t brokenSamples = 0;  // NaN or infinite
};

// Samples that are broken become 0, and count as that.
SoundLevel measureLevel(std::span<float> samples);

} // namespace zelvatone
