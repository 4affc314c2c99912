#include "engine/fast/FastRenderer.h"

#include "engine/fast/EnvelopeRun.h"
#include "engine/fast/InputRange.h"
#include "engine/fast/LookupReport.h"

#include <algorithm>
#include <numbers>

namespace zelvatone {

namespace {

// The arrays of a bank are as long as the kernels take them to be.
static_assert(kWidestLanes * sizeof(float) == PaddedAllocator<float>::kStep);
static_assert(FastRenderer::kSlots <= kBatchSegments);

bool isSame(const BankTraits& a, const BankTraits& b) {
    return a.loudnessMoves == b.loudnessMoves && a.motion == b.motion && a.wrap == b.wrap;
}

} // namespace

FastRenderer::FastRenderer(const ModeKernel& kernel, const VoiceSlots& slots,
                           const VoiceSettings& settings, const EnvelopeSettings& envelopeSettings)
    : kernel_(kernel),
      slots_(slots),
      settings_(settings),
      envelopeSettings_(envelopeSettings),
      targets_(&settings),
      cycle_(&settings) {}

void FastRenderer::startVoice(ModeVoice& voice, float frequency) {
    if (!isInFastRange(settings_)) {
        voice.start(frequency);
        return;
    }
    voice.beginNote(frequency);
    targets_.fill(voice, voice.activeCount);
    voice.standOnTargets();
}

void FastRenderer::beginBlock(double dt) {
    dt_ = dt;
    settingsAreDerived_ = false; // until there is a voice: a silent block needs none of it
}

bool FastRenderer::render(float* out, std::int32_t samples) {
    slots_.freeFinishedSlots();
    voices_.collect(slots_);
    if (voices_.count() == 0) {
        std::fill_n(out, samples, 0.0F);
        return true;
    }
    updateDerivedSettings();
    if (!settingsAreInRange_) {
        return false;
    }
    analyseVoices(samples);
    if (!voicesAreInRange()) {
        return false;
    }
    runEnvelopes(samples);
    renderVoices(samples);
    printFailedLookups(scratch_.failures, settings_);
    mixVoices(out, samples);
    return true;
}

// Events change the pitch bend between runs, all else changes between blocks.
void FastRenderer::updateDerivedSettings() {
    if (!settingsAreDerived_) {
        settingsAreDerived_ = true;
        cycle_.update();
        updateConstants();
        settingsAreInRange_ =
            cycle_.isReadable() && isInFastRange(settings_) && isInFastRange(envelopeSettings_);
    }
    bend_.hold(static_cast<float>(2.0 * settings_.secondsPerSample * std::numbers::pi *
                                  settings_.bendRatio));
}

void FastRenderer::updateConstants() {
    constants_.phaseAdvance = &bend_.phaseAdvance();
    constants_.entriesPerRadian = cycle_.entriesPerRadian();
    constants_.cycle = cycle_.middle();
    constants_.indexLimit = cycle_.indexLimit();
    constants_.silentEntry = cycle_.silentEntry();
    dropFactors_.update(settings_.dropFactor, settings_.dropModulus);
    dropFactors_.describe(constants_);
}

void FastRenderer::analyseVoices(std::int32_t samples) {
    for (std::int32_t i = 0; i < voices_.count(); ++i) {
        analyse(voices_[i], samples);
    }
}

// Fills in what the voice does in this run.
void FastRenderer::analyse(ActiveVoice& active, std::int32_t samples) const {
    active.isInRange = isInFastRange(*active.voice) && isInFastRange(*active.envelope);
    if (!active.isInRange) {
        return;
    }
    ModeBank bank = bankOf(*active.voice);
    active.changes = samplesBeforeChange(*active.voice, samples) < samples;
    if (active.changes) { // modes may enter with what they hold from earlier
        bank.count = kMaxModeCount;
        active.isInRange = kernel_.amplitudesAreInRange(bank);
    } else {
        active.traits = kernel_.analyse(bank, constants_, samples);
        active.isInRange = active.traits.inFastRange;
    }
}

bool FastRenderer::voicesAreInRange() const {
    for (std::int32_t i = 0; i < voices_.count(); ++i) {
        if (!voices_[i].isInRange) {
            return false;
        }
    }
    return true;
}

void FastRenderer::runEnvelopes(std::int32_t samples) {
    for (std::int32_t i = 0; i < voices_.count(); ++i) {
        ActiveVoice& active = voices_[i];
        active.end = runEnvelope(*active.envelope, dt_, samples, active.levels);
        if (active.end < samples) { // the envelope has ended within the run
            slots_.notes[active.slot] = kFreeSlot;
        }
    }
}

// Voices in which nothing changes for the whole run wait for others like them, the rest is rendered
// at once.
void FastRenderer::renderVoices(std::int32_t samples) {
    for (std::int32_t i = 0; i < voices_.count(); ++i) {
        ActiveVoice& active = voices_[i];
        active.isRendered = active.changes || active.end < samples;
        if (active.isRendered) {
            renderVoice(active.task(), active.end, {kernel_, constants_, scratch_, targets_});
        }
    }
    for (std::int32_t i = 0; i < voices_.count(); ++i) {
        if (!voices_[i].isRendered) {
            renderBatch(i, samples);
        }
    }
}

// Active voice `first` and all that wait like it, as far as they fit.
void FastRenderer::renderBatch(std::int32_t first, std::int32_t samples) {
    std::array<Segment, kSlots> segments;
    std::int32_t count = 0;
    std::int32_t lanesLeft = kBatchLanes;
    for (std::int32_t i = first; i < voices_.count(); ++i) {
        ActiveVoice& active = voices_[i];
        const std::int32_t lanes =
            (active.voice->activeCount + kernel_.lanes - 1) / kernel_.lanes * kernel_.lanes;
        if (active.isRendered || !isSame(active.traits, voices_[first].traits) ||
            lanes > lanesLeft) {
            continue;
        }
        lanesLeft -= lanes;
        segments[count++] = segmentOf(active.task(), 0);
        advanceClock(*active.voice, samples);
        active.isRendered = true;
    }
    kernel_.render(segments.data(), count, samples, voices_[first].traits, constants_, scratch_);
}

void FastRenderer::mixVoices(float* out, std::int32_t samples) {
    alignas(64) std::array<float, kRunSamples> sum{};
    alignas(64) std::array<float, kRunSamples> weight{};
    for (std::int32_t i = 0; i < voices_.count(); ++i) {
        const ActiveVoice& active = voices_[i];
        kernel_.mix(sum.data(), weight.data(), active.samples, active.levels, active.end);
    }
    alignas(64) std::array<float, kRunSamples> scaled;
    kernel_.finish(scaled.data(), sum.data(), weight.data(), samples);
    std::copy_n(scaled.begin(), samples, out);
}

} // namespace zelvatone
