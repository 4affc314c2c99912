#include "engine/fast/FastRenderer.h"

#include "engine/ZelvatoneEngine.h"
#include "engine/fast/EnvelopeRun.h"
#include "engine/fast/InputRange.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zelvatone {

namespace {

static_assert(FastRenderer::kSlots == ZelvatoneEngine::kVoiceCount);
static_assert(kPaddedModes >= kMaxModeCount);

bool isSame(const BankTraits& a, const BankTraits& b) {
    return a.loudnessMoves == b.loudnessMoves && a.motion == b.motion && a.wrap == b.wrap;
}

} // namespace

FastRenderer::FastRenderer(const ModeKernel& kernel, ZelvatoneEngine& engine)
    : kernel(kernel),
      engine(engine),
      targets(engine.settings.get()),
      cycle(engine.settings.get()) {}

void FastRenderer::startVoice(ModeVoice& voice, float frequency) {
    if (!isInFastRange(*engine.settings)) {
        voice.start(frequency);
        return;
    }
    voice.beginNote(frequency);
    targets.fill(voice, voice.activeCount);
    voice.standOnTargets();
}

bool FastRenderer::render(float* out, std::int32_t samples) {
    collectActiveVoices();
    if (activeCount == 0) {
        std::fill_n(out, samples, 0.0F);
        return true;
    }
    if (!updateDerivedSettings() || !voicesAreInRange(samples)) {
        return false;
    }
    runEnvelopes(samples);
    renderVoices(samples);
    mixVoices(out, samples);
    return true;
}

// Slots whose note has faded become free, the others are the active voices of this run, in slot
// order.
void FastRenderer::collectActiveVoices() {
    activeCount = 0;
    for (std::int32_t slot = 0; slot < kSlots; ++slot) {
        std::int32_t& note = engine.voiceNotes[slot];
        if (note == SynthEngine::kFreeSlot) {
            continue;
        }
        if (!engine.envelopes[slot]->isActive()) {
            note = SynthEngine::kFreeSlot;
            continue;
        }
        ActiveVoice& active = activeVoices[activeCount++];
        active.slot = slot;
        active.voice = engine.voices[slot].get();
        active.envelope = engine.envelopes[slot].get();
    }
}

// Brings everything that is derived from the settings up to date. Events change the pitch bend
// between runs, all else changes between blocks.
bool FastRenderer::updateDerivedSettings() {
    const VoiceSettings& settings = *engine.settings;
    if (!settingsAreDerived) {
        settingsAreDerived = true;
        settingsAreInRange =
            isInFastRange(settings) && isInFastRange(*engine.envelopeSettings) && cycle.renew();
        renewConstants();
    }
    constants.radiansPerHz =
        static_cast<float>(2.0 * settings.secondsPerSample * std::numbers::pi * settings.bendRatio);
    return settingsAreInRange;
}

void FastRenderer::renewConstants() {
    constants.entriesPerRadian = cycle.entriesPerRadian();
    constants.cycle = cycle.middle();
    const float factor = engine.settings->dropFactor;
    const std::int32_t modulus = engine.settings->dropModulus;
    if (constants.dropFactors != nullptr && factor == dropFactor && modulus == dropModulus) {
        return;
    }
    dropFactor = factor;
    dropModulus = modulus;
    for (std::int32_t mode = 0; mode < kPaddedModes; ++mode) {
        dropFactors[mode] = modulus < 2 || mode % modulus == 1 ? factor : 1.0F;
    }
    constants.dropFactors = dropFactors.data();
    constants.drops = factor != 1.0F;
    constants.dropsGliding = modulus < 2;
    constants.dropGrowth = std::pow(std::max(factor, 1.0F), float{kRunSamples});
}

bool FastRenderer::voicesAreInRange(std::int32_t samples) {
    return std::all_of(activeVoices.begin(), activeVoices.begin() + activeCount,
                       [&](ActiveVoice& active) { return analyse(active, samples); });
}

// Fills in what `active` does in this run; returns whether all of it is in the fast range.
bool FastRenderer::analyse(ActiveVoice& active, std::int32_t samples) {
    if (!isInFastRange(*active.voice) || !isInFastRange(*active.envelope)) {
        return false;
    }
    ModeBank bank = bankOf(*active.voice);
    active.traits = kernel.analyse(bank, constants, samples);
    if (!active.traits.inFastRange) {
        return false;
    }
    active.changes = samplesBeforeChange(*active.voice, samples) < samples;
    if (active.changes) { // modes may enter with what they hold from earlier
        bank.count = kMaxModeCount;
        return kernel.analyse(bank, constants, samples).inFastRange;
    }
    return true;
}

void FastRenderer::runEnvelopes(std::int32_t samples) {
    const double dt = 1.0 / static_cast<double>(engine.sampleRate);
    for (std::int32_t i = 0; i < activeCount; ++i) {
        ActiveVoice& active = activeVoices[i];
        active.samples = runEnvelope(*active.envelope, dt, samples, buffers[i].levels);
        if (active.samples < samples) { // the envelope has ended within the run
            engine.voiceNotes[active.slot] = SynthEngine::kFreeSlot;
        }
    }
}

// Voices in which nothing changes for the whole run wait for others like them, the rest is rendered
// at once.
void FastRenderer::renderVoices(std::int32_t samples) {
    for (std::int32_t i = 0; i < activeCount; ++i) {
        ActiveVoice& active = activeVoices[i];
        active.isRendered =
            active.changes || active.traits.phaseTooFast || active.samples < samples;
        if (active.isRendered) {
            renderVoice(*active.voice, active.samples, buffers[i].samples,
                        {kernel, constants, scratch, targets});
        }
    }
    for (std::int32_t i = 0; i < activeCount; ++i) {
        if (!activeVoices[i].isRendered) {
            renderBatch(i, samples);
        }
    }
}

// Active voice `first` and all that wait like it, as far as they fit.
void FastRenderer::renderBatch(std::int32_t first, std::int32_t samples) {
    std::array<Segment, kSlots> segments;
    std::int32_t count = 0;
    std::int32_t lanesLeft = kBatchLanes;
    for (std::int32_t i = first; i < activeCount; ++i) {
        ActiveVoice& active = activeVoices[i];
        const ModeBank bank = bankOf(*active.voice);
        const std::int32_t lanes = (bank.count + kernel.lanes - 1) / kernel.lanes * kernel.lanes;
        if (active.isRendered || !isSame(active.traits, activeVoices[first].traits) ||
            lanes > lanesLeft) {
            continue;
        }
        lanesLeft -= lanes;
        segments[count++] = {bank, active.voice->gain, buffers[i].samples};
        advanceClock(*active.voice, samples);
        active.isRendered = true;
    }
    kernel.render(segments.data(), count, samples, activeVoices[first].traits, constants, scratch);
}

void FastRenderer::mixVoices(float* out, std::int32_t samples) {
    alignas(64) std::array<float, kRunSamples> sum{};
    alignas(64) std::array<float, kRunSamples> weight{};
    for (std::int32_t i = 0; i < activeCount; ++i) {
        kernel.mix(sum.data(), weight.data(), buffers[i].samples, buffers[i].levels,
                   activeVoices[i].samples);
    }
    alignas(64) std::array<float, kRunSamples> scaled;
    kernel.finish(scaled.data(), sum.data(), weight.data(), samples);
    std::copy_n(scaled.begin(), samples, out);
}

} // namespace zelvatone
