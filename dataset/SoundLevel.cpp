#include "dataset/SoundLevel.h"

#include "host/audio/NonFinite.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstring>

namespace zelvatone {

namespace {

constexpr std::size_t kLanes = 4; // what every x86-64 processor computes at once
using Ints __attribute__((vector_size(4 * kLanes))) = std::int32_t;

constexpr std::int32_t kMagnitude = 0x7FFFFFFF; // all bits but the sign
constexpr std::int32_t kInfinity = 0x7F800000;  // NaNs are above it

// Bits of the largest magnitude: those of floats without their sign are in the order of the floats.
std::int32_t largestBits(std::span<const float> samples) {
    Ints largest{};
    std::size_t i = 0;
    for (; i + kLanes <= samples.size(); i += kLanes) {
        Ints bits;
        std::memcpy(&bits, samples.data() + i, sizeof bits);
        bits &= kMagnitude;
        largest = bits > largest ? bits : largest;
    }
    std::int32_t result = 0;
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
        result = std::max(result, largest[lane]);
    }
    for (; i < samples.size(); ++i) {
        result = std::max(result, std::bit_cast<std::int32_t>(samples[i]) & kMagnitude);
    }
    return result;
}

} // namespace

SoundLevel measureLevel(std::span<float> samples) {
    SoundLevel level;
    std::int32_t largest = largestBits(samples);
    if (largest >= kInfinity) {
        level.brokenSamples = silenceNonFinite(samples);
        largest = largestBits(samples);
    }
    level.peak = std::bit_cast<float>(largest);
    if (level.peak > 1.0F) {
        level.clippedSamples = std::count_if(samples.begin(), samples.end(),
                                             [](float sample) { return std::abs(sample) > 1.0F; });
    }
    return level;
}

} // namespace zelvatone
