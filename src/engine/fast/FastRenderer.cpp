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
    : kernel_(kernel),
      engine_(engine),
      targets_(engine.settings.get()),
      cycle_(engine.settings.get()) {}

void FastRenderer::startVoice(ModeVoice& voice, float frequency) {
    if (!isInFastRange(*engine_.settings)) {
        voice.start(frequency);
        return;
    }
    voice.beginNote(frequency);
    targets_.fill(voice, voice.activeCount);
    voice.standOnTargets();
}

bool FastRenderer::render(float* out, std::int32_t samples) {
    collectActiveVoices();
    if (activeCount_ == 0) {
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
    activeCount_ = 0;
    for (std::int32_t slot = 0; slot < kSlots; ++slot) {
        std::int32_t& note = engine_.voiceNotes[slot];
        if (note == SynthEngine::kFreeSlot) {
            continue;
        }
        if (!engine_.envelopes[slot]->isActive()) {
            note = SynthEngine::kFreeSlot;
            continue;
        }
        ActiveVoice& active = activeVoices_[activeCount_++];
        active.slot = slot;
        active.voice = engine_.voices[slot].get();
        active.envelope = engine_.envelopes[slot].get();
    }
}

// Brings everything that is derived from the settings up to date. Events change the pitch bend
// between runs, all else changes between blocks.
bool FastRenderer::updateDerivedSettings() {
    const VoiceSettings& settings = *engine_.settings;
    if (!settingsAreDerived_) {
        settingsAreDerived_ = true;
        settingsAreInRange_ =
            isInFastRange(settings) && isInFastRange(*engine_.envelopeSettings) && cycle_.renew();
        renewConstants();
    }
    constants_.radiansPerHz =
        static_cast<float>(2.0 * settings.secondsPerSample * std::numbers::pi * settings.bendRatio);
    return settingsAreInRange_;
}

void FastRenderer::renewConstants() {
    constants_.entriesPerRadian = cycle_.entriesPerRadian();
    constants_.cycle = cycle_.middle();
    const float factor = engine_.settings->dropFactor;
    const std::int32_t modulus = engine_.settings->dropModulus;
    if (constants_.dropFactors != nullptr && factor == dropFactor_ && modulus == dropModulus_) {
        return;
    }
    dropFactor_ = factor;
    dropModulus_ = modulus;
    for (std::int32_t mode = 0; mode < kPaddedModes; ++mode) {
        dropFactors_[mode] = modulus < 2 || mode % modulus == 1 ? factor : 1.0F;
    }
    constants_.dropFactors = dropFactors_.data();
    constants_.drops = factor != 1.0F;
    constants_.dropsGliding = modulus < 2;
    constants_.dropGrowth = std::pow(std::max(factor, 1.0F), float{kRunSamples});
}

bool FastRenderer::voicesAreInRange(std::int32_t samples) {
    return std::all_of(activeVoices_.begin(), activeVoices_.begin() + activeCount_,
                       [&](ActiveVoice& active) { return analyse(active, samples); });
}

// Fills in what `active` does in this run; returns whether all of it is in the fast range.
bool FastRenderer::analyse(ActiveVoice& active, std::int32_t samples) {
    if (!isInFastRange(*active.voice) || !isInFastRange(*active.envelope)) {
        return false;
    }
    ModeBank bank = bankOf(*active.voice);
    active.traits = kernel_.analyse(bank, constants_, samples);
    if (!active.traits.inFastRange) {
        return false;
    }
    active.changes = samplesBeforeChange(*active.voice, samples) < samples;
    if (active.changes) { // modes may enter with what they hold from earlier
        bank.count = kMaxModeCount;
        return kernel_.analyse(bank, constants_, samples).inFastRange;
    }
    return true;
}

void FastRenderer::runEnvelopes(std::int32_t samples) {
    const double dt = 1.0 / static_cast<double>(engine_.sampleRate);
    for (std::int32_t i = 0; i < activeCount_; ++i) {
        ActiveVoice& active = activeVoices_[i];
        active.samples = runEnvelope(*active.envelope, dt, samples, buffers_[i].levels);
        if (active.samples < samples) { // the envelope has ended within the run
            engine_.voiceNotes[active.slot] = SynthEngine::kFreeSlot;
        }
    }
}

// Voices in which nothing changes for the whole run wait for others like them, the rest is rendered
// at once.
void FastRenderer::renderVoices(std::int32_t samples) {
    for (std::int32_t i = 0; i < activeCount_; ++i) {
        ActiveVoice& active = activeVoices_[i];
        active.isRendered =
            active.changes || active.traits.phaseTooFast || active.samples < samples;
        if (active.isRendered) {
            renderVoice(*active.voice, active.samples, buffers_[i].samples,
                        {kernel_, constants_, scratch_, targets_});
        }
    }
    for (std::int32_t i = 0; i < activeCount_; ++i) {
        if (!activeVoices_[i].isRendered) {
            renderBatch(i, samples);
        }
    }
}

// Active voice `first` and all that wait like it, as far as they fit.
void FastRenderer::renderBatch(std::int32_t first, std::int32_t samples) {
    std::array<Segment, kSlots> segments;
    std::int32_t count = 0;
    std::int32_t lanesLeft = kBatchLanes;
    for (std::int32_t i = first; i < activeCount_; ++i) {
        ActiveVoice& active = activeVoices_[i];
        const ModeBank bank = bankOf(*active.voice);
        const std::int32_t lanes = (bank.count + kernel_.lanes - 1) / kernel_.lanes * kernel_.lanes;
        if (active.isRendered || !isSame(active.traits, activeVoices_[first].traits) ||
            lanes > lanesLeft) {
            continue;
        }
        lanesLeft -= lanes;
        segments[count++] = {bank, active.voice->gain, buffers_[i].samples};
        advanceClock(*active.voice, samples);
        active.isRendered = true;
    }
    kernel_.render(segments.data(), count, samples, activeVoices_[first].traits, constants_,
                   scratch_);
}

void FastRenderer::mixVoices(float* out, std::int32_t samples) {
    alignas(64) std::array<float, kRunSamples> sum{};
    alignas(64) std::array<float, kRunSamples> weight{};
    for (std::int32_t i = 0; i < activeCount_; ++i) {
        kernel_.mix(sum.data(), weight.data(), buffers_[i].samples, buffers_[i].levels,
                    activeVoices_[i].samples);
    }
    alignas(64) std::array<float, kRunSamples> scaled;
    kernel_.finish(scaled.data(), sum.data(), weight.data(), samples);
    std::copy_n(scaled.begin(), samples, out);
}

} // namespace zelvatone
