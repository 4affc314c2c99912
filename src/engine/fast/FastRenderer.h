// Renders runs of samples, voice after voice instead of sample after sample, on the same voices and
// envelopes as the reference renderer and with the same bits.
#pragma once

#include "engine/VoiceSettings.h"
#include "engine/VoiceSlots.h"
#include "engine/fast/ActiveVoices.h"
#include "engine/fast/BendLine.h"
#include "engine/fast/DropFactors.h"
#include "engine/fast/ModeKernel.h"
#include "engine/fast/ModeTargets.h"
#include "engine/fast/WaveCycle.h"

#include <array>
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

    // To be called when the settings may have changed. `dt`: the length of a sample in seconds.
    void beginBlock(double dt);

    // Begins a run of up to `samples` samples (1..kRunSamples), after the events at the first of
    // them. Returns false if some value among settings and voices is outside the input range: the
    // reference renderer must render instead.
    bool beginRun(std::int32_t samples);
    // Moves on to `sample` of the run, at which events are to act. Returns false if the run has to
    // end before that sample, with none of them applied yet.
    bool moveTo(std::int32_t sample);
    // Whether the run can go on after these events. If not, it has to end before their sample.
    bool runIsInRange() const { return runIsInRange_; }
    // Ends the run after `samples` samples and writes them to `out`.
    void finishRun(float* out, std::int32_t samples);

    // What events do, between runs or at the sample of the run moved to last.

    // Starts the voice of `slot`, whose note has been noted, at `frequency` Hz. The envelope is
    // triggered by the caller.
    void startVoice(std::int32_t slot, float frequency);
    // Releases the envelope of `slot`, whose note has been noted.
    void releaseVoice(std::int32_t slot);
    // Follows the settings' new pitch bend.
    void followBend();

private:
    bool isWithinRun() const { return sample_ > 0; }
    void updateDerivedSettings();
    void updateConstants();
    float radiansPerHz() const;
    void analyseVoices(std::int32_t samples);
    void analyse(ActiveVoice& active, std::int32_t samples) const;
    bool voicesAreInRange() const;
    ActiveVoice& join(std::int32_t slot);
    void limitEvents(const ActiveVoice& active);
    void runEnvelope(ActiveVoice& active, std::int32_t end) const;
    void runEnvelopes(std::int32_t samples);
    void analyseAgain(std::int32_t samples);
    void renderVoices();
    void beginStretch(ActiveVoice& active);
    void nextStretch(ActiveVoice& active, std::int32_t first);
    void renderBatch(std::int32_t leader);
    void mixVoices(float* out, std::int32_t samples);

    // The two large ones, on boundaries of vectors.
    KernelScratch scratch_;
    ActiveVoices voices_;
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
    // The run, whose voices are voices_.
    std::int32_t limit_ = 0;     // the most samples that it can have
    std::int32_t sample_ = 0;    // moved to; 0: outside a run, or at its beginning
    std::int32_t lastEvent_ = 0; // the last sample at which events may act
    bool runIsInRange_ = false;
    // A batch: its voices, and what is rendered of each.
    std::array<ActiveVoice*, kSlots> members_{};
    std::array<Segment, kSlots> segments_{};
};

} // namespace zelvatone
