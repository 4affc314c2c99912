#include "engine/WaveTable.h"

#include "params/Truncation.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <numbers>
#include <span>

namespace zelvatone::wavetable {

namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;

enum WaveKind : std::uint32_t { kSine, kSquare, kSaw, kPoly, kSonOfPoly, kWaveKindCount };

// Radians by which the upper partial of the two poly waves is ahead: it makes their halves differ.
constexpr double kPolyOffset = 0.5;

// Entry `i` of a cycle of `size` entries, in -1..1. The poly waves mix their partials with the
// single-precision values of 0.7 and 0.3, 0.9 and 0.1.
double waveEntry(std::uint32_t waveKind, std::int32_t i, std::int32_t size) {
    const double x = i * kTwoPi / size;
    switch (waveKind) {
    case kSine:
        return std::sin(x);
    case kSquare:
        return i < size / 2 ? -1.0 : 1.0;
    case kSaw:
        return static_cast<double>(i) / static_cast<double>(static_cast<float>(size)) * 2.0 - 1.0;
    case kPoly:
        return 0.699999988079071 * std::sin(x) +
               0.30000001192092896 * std::sin(3.0 * x + kPolyOffset);
    default: // kSonOfPoly
        return 0.8999999761581421 * std::sin(x) +
               0.10000000149011612 * std::sin(10.0 * x + kPolyOffset);
    }
}

// Puts every entry on the nearest of 2^(crushBits - 1) + 1 levels from -1 to +1.
void crush(std::span<float> table, std::int32_t crushBits) {
    // The shift counts modulo 32, as the processor's does, so that no bit count is out of bounds.
    const std::uint32_t shift = (static_cast<std::uint32_t>(crushBits) - 1U) & 31U;
    const auto q = static_cast<float>(static_cast<std::int32_t>(std::uint32_t{1} << shift));
    for (float& entry : table) {
        const auto t = static_cast<float>((static_cast<double>(entry) + 1.0) * 0.5);
        const std::int32_t k = roundToInt32(q * t);
        const float level = static_cast<float>(k) / q;
        const auto doubled = static_cast<float>(static_cast<double>(level) * 2.0);
        entry = static_cast<float>(static_cast<double>(doubled) - 1.0);
    }
}

void allocate(VoiceSettings& settings, std::int32_t size) {
    if (settings.table != nullptr && settings.tableSize == size) {
        return;
    }
    const std::size_t bytes = static_cast<std::size_t>(size) * sizeof(float);
    settings.table.reset(static_cast<float*>(::operator new[](bytes, kTableAlignment)));
    settings.tableSize = size;
    std::fill_n(settings.table.get(), size, 0.0F);
}

} // namespace

void build(VoiceSettings& settings, std::int32_t size) {
    allocate(settings, size);
    const std::span<float> table(settings.table.get(), static_cast<std::size_t>(size));
    const auto waveKind = static_cast<std::uint32_t>(settings.waveKind);
    if (waveKind < kWaveKindCount) {
        for (std::int32_t i = 0; i < size; ++i) {
            table[static_cast<std::size_t>(i)] = static_cast<float>(waveEntry(waveKind, i, size));
        }
    } else {
        std::printf("Unsupported waveform type requested...\n");
    }
    if (settings.crushBits != 0) {
        crush(table, settings.crushBits);
    }
}

Readout::Readout(const VoiceSettings& settings)
    : length(truncateToInt32(
          static_cast<double>(settings.chop * static_cast<float>(settings.tableSize)))),
      scale(static_cast<float>(length / kTwoPi)) {}

namespace {

// The index that `phase` comes to, inside the entries in use or not.
std::int32_t indexOf(const Readout& readout, float phase) {
    std::int32_t index = truncateToInt32(static_cast<double>(readout.scale * phase));
    if (index < 0) {
        // Unsigned, because a NaN phase (the lowest integer) may meet a NaN "Chop" (the same).
        index = static_cast<std::int32_t>(static_cast<std::uint32_t>(index) +
                                          static_cast<std::uint32_t>(readout.length));
    }
    return index == readout.length ? 0 : index;
}

} // namespace

std::int32_t lookup(const Readout& readout, float phase) {
    const std::int32_t index = indexOf(readout, phase);
    return index >= 0 && index < readout.length ? index : kNoEntry;
}

void printFailedLookup(const Readout& readout, float phase) {
    std::printf("Invalid lookup index: %i from %f blah\n", indexOf(readout, phase),
                static_cast<double>(phase));
}

} // namespace zelvatone::wavetable
