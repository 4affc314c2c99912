// Renders runs of samples between events, voice after voice instead of sample after sample, on the
// same voices and envelopes as the reference renderer and with the same bits.
#pragma once

#include "engine/VoiceSettings.h"
#include "engine/VoiceSlots.h"
#include "engine/fast/ActiveVoices.h"
#include "engine/fast/BendLine.h"
#include "engine/fast/DropFactors.h"
#include "engine/fast/ModeKernel.h"
#include "engine/fast/ModeTargets.h"
#include "engine/fast/WaveCycle.h"

#include <cstdint>

namespace zelvatone {

// Audio thread. Holds no state of the sound: tables derived from the settings, and buffers.
class FastRenderer {
public:
    static constexpr std::int32_t kSlots = ActiveVoices::kSlots;

    // Renders `slots`, kSlots of them, whose voices and envelopes read these settings. None of the
    // three is owned; all must outlive the renderer.
    FastRenderer(const ModeKernel& kernel, const VoiceSlots& slots, const VoiceSettings& settings,
                 const EnvelopeSettings& envelopeSettings);

    // Begins a note of `frequency` Hz in `voice`.
    void startVoice(ModeVoice& voice, float frequency);

    // To be called when the settings may have changed. `dt`: the length of a sample in seconds.
    void beginBlock(double dt);
    // Writes the next `samples` samples (1..kRunSamples) to `out`; in these no event acts. Returns
    // false, with nothing done, if some value among settings and voices is outside the input
    // range: the reference renderer must render them.
    bool render(float* out, std::int32_t samples);

private:
    void updateDerivedSettings();
    void updateConstants();
    void analyseVoices(std::int32_t samples);
    void analyse(ActiveVoice& active, std::int32_t samples) const;
    bool voicesAreInRange() const;
    void runEnvelopes(std::int32_t samples);
    void renderVoices(std::int32_t samples);
    void renderBatch(std::int32_t first, std::int32_t samples);
    void mixVoices(float* out, std::int32_t samples);

    KernelScratch scratch_;
    const ModeKernel& kernel_;
    const VoiceSlots slots_;
    const VoiceSettings& settings_;
    const EnvelopeSettings& envelopeSettings_;
    ModeTargets targets_;
    WaveCycle cycle_;
    double dt_ = 0.0;
    // Derived from the settings, once a block.
    bool settingsAreDerived_ = false;
    bool settingsAreInRange_ = false;
    BlockConstants constants_{};
    BendLine bend_;
    DropFactors dropFactors_;
    ActiveVoices voices_; // of the run that is being rendered
};

} // namespace zelvatone
