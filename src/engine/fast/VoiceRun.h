// One voice over the samples of a run: where its modes change, and what lies in between.
#pragma once

#include "engine/ModeVoice.h"
#include "engine/fast/ModeKernel.h"
#include "engine/fast/ModeTargets.h"

#include <cstdint>

namespace zelvatone {

// What rendering voices takes, besides the voices.
struct RunTools {
    const ModeKernel& kernel;
    const BlockConstants& constants;
    KernelScratch& scratch;
    ModeTargets& targets;
};

// Room for the samples of a voice. A kernel writes whole quads and so up to three samples past the
// run; a whole vector more keeps what follows the buffer aligned.
constexpr std::int32_t kVoiceBuffer = kRunSamples + kWidestLanes;
static_assert(kWidestLanes >= kQuad - 1);

// Which voice is rendered, and where its run's samples go: `out` has room for kVoiceBuffer.
struct VoiceTask {
    ModeVoice& voice;
    std::int32_t slot;
    float* out;
};

// The kernel's view of `voice`.
ModeBank bankOf(ModeVoice& voice);

// What `task` has to render from sample `sample` of its run on.
Segment segmentOf(const VoiceTask& task, std::int32_t sample);

// How many of the next `samples` samples (1..kRunSamples) end before one at which modes may enter,
// leave or get new targets: `samples` if there is none. The voice is in the fast range. Audio
// thread, as is all that follows.
std::int32_t samplesBeforeChange(const ModeVoice& voice, std::int32_t samples);

// Moves the clock of `voice` on by `samples`, 1..kRunSamples.
void advanceClock(ModeVoice& voice, std::int32_t samples);

// Samples of a run in which the modes of a voice do not change.
struct VoiceStretch {
    std::int32_t first, samples;
};

// Renders the samples from `first` on at which modes may change, for a voice in the fast range.
// Returns the stretch after them, up to the next such sample or to `end` of the run: no samples if
// all are rendered. A kernel can render it.
VoiceStretch renderChanges(const VoiceTask& task, std::int32_t first, std::int32_t end,
                           const RunTools& tools);

} // namespace zelvatone
