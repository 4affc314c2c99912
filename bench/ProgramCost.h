// What each factory program costs with all voices held.
#pragma once

#include "bench/Loads.h"

#include <cstdint>

namespace bench {

// Notes that are held, and for how long. The reference renderer takes part in the first seconds
// only: with some programs it takes several times as long as the sound lasts.
struct HeldChord {
    std::int32_t program;         // 0 to 41
    std::int32_t notes;           // 1 to 32, from C2 up
    std::int32_t seconds;         // of sound
    std::int32_t secondsCompared; // of them, from the first on, beside the reference renderer
};

struct ProgramCost {
    double coreShare;   // mean over all seconds
    double worstBlock;  // seconds; the most expensive block of kBlock samples
    double ratio;       // times less than the reference renderer, over the seconds compared
    std::uint64_t hash; // of the samples compared
    bool sameSound;     // as the reference renderer's
};

// Plays `chord` on new engines, with `renderer` and the reference renderer in turn, second by
// second; then twice more with `renderer` alone, since whatever disturbs a block is unlikely to hit
// the same one again: the time of a block is its shortest of three.
ProgramCost measureProgram(const HeldChord& chord, zelvatone::Renderer renderer);

} // namespace bench
