// Mode targets from tables: a shift or a note needs up to a hundred powers, and they change only
// when a knob does.
#pragma once

#include "engine/ModePowers.h"
#include "engine/ModeVoice.h"

#include <array>
#include <cstdint>

namespace zelvatone {

// Derived from the settings and renewed where they have changed: no state of the sound. Audio
// thread.
class ModeTargets {
public:
    // `settings` is not owned and must outlive the targets.
    explicit ModeTargets(const VoiceSettings* settings);

    // Does what computeTargets and normaliseTargets of `voice` do, for settings that are numbers.
    // `count`: 0..kMaxModeCount.
    void fill(ModeVoice& voice, std::int32_t count);

private:
    // What decides the powers.
    struct Shape {
        float falloff, parity, detune;
    };
    // What decides the amplitudes of one set of modes, whatever the note.
    struct Set {
        std::int32_t count, extras;
        float primePower;
    };

    void renewPowers();
    void renewAmplitudes(std::int32_t count, std::int32_t extras);

    const VoiceSettings* settings_;
    Shape shape_{};
    std::array<float, kMaxModeCount> harmonicAmps_{}; // by harmonic less one
    std::array<float, kPrimes.size()> ratios_{};      // by extra mode
    Set set_{};
    std::array<float, kMaxModeCount> amplitudes_{}; // by mode, normalised
};

} // namespace zelvatone
