// The 23 parameters: their order, names, ranges and defaults.
#pragma once

#include "params/SynthProgram.h"

#include <cstdint>

namespace zelvatone {

// A parameter's index is its identity everywhere: the host's parameter number, the editor's control
// tag, the engine's read order and the factory table's column.
enum ParameterIndex : std::int32_t {
    kModeShift,
    kShiftInterval,
    kMinModes,
    kMaxModes,
    kFalloff,
    kParity,
    kJitter,
    kFreqDrop,
    kChop,
    kModes,
    kDetune,
    kPower,
    kDropMod,
    kWave,
    kCrush,
    kBlendTime,
    kExitPeel,
    kModeInit,
    kAttack,
    kDecay,
    kSustain,
    kRelease,
    kReserved,
    kParameterCount
};

// A program named "Unnamed Program" with all 23 parameters at their defaults.
SynthProgram makeDefaultProgram();

} // namespace zelvatone
