// An envelope over many samples at once.
#pragma once

#include "engine/ADSR.h"

#include <cstdint>

namespace zelvatone {

// Ticks the active `envelope` up to `samples` (1..kRunSamples) times, by `dt` seconds each, and
// writes its values to `levels`, which has room for kRunSamples. Returns how many ticks there were:
// fewer than `samples` if the note's fade ended with the last one. Audio thread.
std::int32_t runEnvelope(ADSR& envelope, double dt, std::int32_t samples, float* levels);

// Returns how many of the next `samples` ticks (1..kRunSamples) leave `envelope` active: `samples`
// if its fade does not end in them.
std::int32_t ticksBeforeEnd(const ADSR& envelope, double dt, std::int32_t samples);

} // namespace zelvatone
