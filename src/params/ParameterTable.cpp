#include "params/ParameterTable.h"

namespace zelvatone {

SynthProgram makeDefaultProgram() {
    using Value = SynthParameter;
    using Percent = PercentSynthParameter;
    using Integer = IntegerSynthParameter;
    using Wave = WaveSynthParameter;
    using Beats = BeatsSynthParameter;

    SynthProgram program(kParameterCount);
    const auto put = [&program](ParameterIndex index, SynthParameter* parameter) {
        program.replaceParameter(index, parameter);
    };
    // clang-format off
    //                              name               label      min     max    default
    put(kModeShift,     new Integer("Mode Shift",      "osc",   -3.0F,   3.0F,   0.0F));
    put(kShiftInterval, new Beats  ("Shift Interval",  "beats", -5.0F,   5.0F,   1.0F));
    put(kMinModes,      new Integer("Min Modes",       "osc",    0.0F, 100.0F,   2.0F));
    put(kMaxModes,      new Integer("Max Modes",       "osc",    0.0F, 100.0F,  20.0F));
    put(kFalloff,       new Value  ("Falloff",         "",      -3.0F,   0.0F,  -1.0F));
    put(kParity,        new Value  ("Parity",          "",      -1.0F,   1.0F,   0.0F));
    put(kJitter,        new Value  ("Jitter",          "Hz",     0.0F, 100.0F,   0.0F));
    put(kFreqDrop,      new Value  ("Freq Drop",       "",      -8.0F,   8.0F,   0.0F));
    put(kChop,          new Value  ("Chop",            "",       0.1F,   1.0F,   1.0F));
    put(kModes,         new Value  ("Modes",           "",       0.0F,   5.0F,   0.0F));
    put(kDetune,        new Value  ("Detune",          "",      0.25F,   2.0F,   0.5F));
    put(kPower,         new Value  ("Power",           "",      0.01F,   2.0F,   0.5F));
    put(kDropMod,       new Value  ("Drop Mod",        "",       1.0F,   5.0F,   1.0F));
    put(kWave,          new Wave   ("Wave",            "",       0.0F,   4.0F,   0.0F));
    put(kCrush,         new Integer("Crush",           "bits",   0.0F,   8.0F,   0.0F));
    put(kBlendTime,     new Value  ("Blend Time",      "s",     0.01F,   1.0F,  0.01F));
    put(kExitPeel,      new Value  ("Exit Peel",       "",      -5.0F,   5.0F,   0.0F));
    put(kModeInit,      new Integer("Mode Init",       "osc",    0.0F, 100.0F,  10.0F));
    put(kAttack,        new Value  ("Attack",          "s",     0.01F,   2.0F,   0.2F));
    put(kDecay,         new Value  ("Decay",           "s",     0.01F,   2.0F,   0.1F));
    put(kSustain,       new Percent("Sustain",         "%",      0.0F,   1.0F,   0.7F));
    put(kRelease,       new Value  ("Release",         "s",     0.01F,   2.0F,   0.3F));
    put(kReserved,      new Integer("Reserved",        "",       0.0F,   4.0F,   0.0F));
    // clang-format on
    return program;
}

} // namespace zelvatone
