// Renders runs of samples between events, voice after voice instead of sample after sample, on the
// same voices and envelopes as the plain rule and with the same bits.
#pragma once

#include "engine/fast/ModeKernel.h"
#include "engine/fast/ModeTargets.h"
#include "engine/fast/VoiceRun.h"
#include "engine/fast/WaveCycle.h"

#include <array>
#include <cstdint>

namespace zelvatone {

class ADSR;
class ZelvatoneEngine;

// Audio thread. Holds no state of the sound: tables derived from the settings, and buffers.
class FastRenderer {
public:
    static constexpr std::int32_t kSlots = 32;

    // `engine` owns the renderer.
    FastRenderer(const ModeKernel& kernel, ZelvatoneEngine& engine);

    // Begins a note of `frequency` Hz in `voice`.
    void startVoice(ModeVoice& voice, float frequency);

    // To be called when the settings may have changed.
    void beginBlock() { settingsAreKnown = false; }
    // Writes the next `samples` samples (1..kRunSamples) to `out`; in these no event acts. Answers
    // false, with nothing done, if some value among settings and voices is not a number or out of
    // all proportion: the plain rule, which prints a line for every look-up that fails, must render
    // them.
    bool render(float* out, std::int32_t samples);

private:
    // A slot that sounds in this run.
    struct Part {
        std::int32_t slot;
        ModeVoice* voice;
        ADSR* envelope;
        Outlook outlook;
        bool changes;         // whether modes may come or go in this run
        std::int32_t samples; // until the run or the note's fade ends
        bool isRendered;
    };
    struct alignas(64) PartBuffer {
        float samples[kVoiceBuffer];
        float levels[kRunSamples];
    };

    void collectParts();
    bool knowSettings();
    void renewMotion();
    bool partsAreCalm(std::int32_t samples);
    bool foresee(Part& part, std::int32_t samples);
    void runEnvelopes(std::int32_t samples);
    void renderParts(std::int32_t samples);
    void renderBatch(std::int32_t first, std::int32_t samples);
    void mixParts(float* out, std::int32_t samples);

    KernelScratch scratch;
    std::array<PartBuffer, kSlots> buffers{}; // by part
    const ModeKernel& kernel;
    ZelvatoneEngine& engine;
    ModeTargets targets;
    WaveCycle cycle;
    Motion motion{};
    std::array<float, kPaddedModes> dropFactors{}; // of these two settings:
    float dropFactor = 1.0F;
    std::int32_t dropModulus = 1;
    std::int32_t partCount = 0;
    std::array<Part, kSlots> parts{};
    bool settingsAreKnown = false;
    bool settingsAreCalm = false;
};

} // namespace zelvatone
