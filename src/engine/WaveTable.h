// The one wave table that every mode of every voice reads: how it is built, and how a phase finds
// its entry.
#pragma once

#include "engine/VoiceSettings.h"

#include <cstdint>

namespace zelvatone::wavetable {

// Builds one cycle of `size` entries into `settings.table` for the settings' waveKind and
// crushBits. Allocates only when the size changes. A wave kind outside 0..4 prints a line and keeps
// the entries, which are then crushed again. Audio thread.
void build(VoiceSettings& settings, std::int32_t size);

// How phases map to entries under the current "Chop".
struct Readout {
    explicit Readout(const VoiceSettings& settings);

    std::int32_t length; // entries in use, counted from the start of the cycle
    float scale;         // entries per radian
};

// No entry: the phase points outside the part of the table in use.
constexpr std::int32_t kNoEntry = -1;

// Returns the table index for `phase` (radians), the nearest entry below it; kNoEntry for a phase
// that no wrapping could bring into the cycle, and for every phase while no entry is in use.
std::int32_t lookup(const Readout& readout, float phase);

// Prints the line for a look-up that found no entry, with the index that it came to.
void printFailedLookup(const Readout& readout, float phase);

} // namespace zelvatone::wavetable
