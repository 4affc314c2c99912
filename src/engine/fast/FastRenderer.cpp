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

bool isSame(const VoiceStretch& a, const VoiceStretch& b) {
    return a.first == b.first && a.samples == b.samples;
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

void FastRenderer::beginBlock(double dt) {
    dt_ = dt;
    settingsAreDerived_ = false; // until there is a voice: a silent block needs none of it
}

bool FastRenderer::beginRun(std::int32_t samples) {
    limit_ = samples;
    voices_.collect(slots_);
    if (voices_.count() == 0) {
        return true;
    }
    updateDerivedSettings();
    if (!runIsInRange_) {
        return false;
    }
    analyseVoices(samples);
    return voicesAreInRange();
}

bool FastRenderer::moveTo(std::int32_t sample) {
    if (!isWithinRun()) { // the first events of the run
        if (voices_.count() == 0) {
            updateDerivedSettings();
        }
        lastEvent_ = limit_;
        for (std::int32_t i = 0; i < voices_.count(); ++i) {
            limitEvents(voices_[i]);
        }
    }
    if (!runIsInRange_ || sample > lastEvent_) {
        return false;
    }
    sample_ = sample;
    return true;
}

void FastRenderer::finishRun(float* out, std::int32_t samples) {
    if (voices_.count() == 0) {
        std::fill_n(out, samples, 0.0F);
    } else {
        runEnvelopes(samples);
        if (isWithinRun()) {
            analyseAgain(samples);
        }
        renderVoices();
        printFailedLookups(scratch_.failures, settings_);
        mixVoices(out, samples);
    }
    sample_ = 0;
}

void FastRenderer::startVoice(std::int32_t slot, float frequency) {
    ModeVoice& voice = *slots_.voices[slot];
    if (!isInFastRange(settings_)) {
        voice.start(frequency);
        return;
    }
    voice.beginNote(frequency);
    targets_.fill(voice, voice.activeCount);
    voice.standOnTargets();
    if (isWithinRun() && slots_.notes[slot] != kFreeSlot) {
        join(slot);
    }
}

void FastRenderer::releaseVoice(std::int32_t slot) {
    if (!isWithinRun()) {
        slots_.envelopes[slot]->release();
        return;
    }
    ActiveVoice& active = join(slot);
    runEnvelope(active, sample_);
    active.envelope->release();
    limitEvents(active);
}

void FastRenderer::followBend() {
    if (isWithinRun()) {
        runIsInRange_ = runIsInRange_ && isBendInFastRange(settings_.bendRatio);
        bend_.bend(sample_, radiansPerHz());
    }
}

// Lets a slot sound from the present sample on, if it does not sound yet.
ActiveVoice& FastRenderer::join(std::int32_t slot) {
    ActiveVoice& active = voices_.join(slots_, slot, sample_);
    if (active.first == sample_) { // modes may enter with what they hold from earlier
        ModeBank bank = bankOf(*active.voice);
        bank.count = kMaxModeCount;
        runIsInRange_ = runIsInRange_ && isInFastRange(*active.voice) &&
                        isInFastRange(*active.envelope) && kernel_.amplitudesAreInRange(bank);
    }
    return active;
}

// A slot whose fade ends becomes free with the next sample, after that sample's events. Later ones
// must find it free: they belong to another run.
void FastRenderer::limitEvents(const ActiveVoice& active) {
    const std::int32_t left = limit_ - active.end;
    const std::int32_t ticks = ticksBeforeEnd(*active.envelope, dt_, left);
    if (ticks < left) {
        lastEvent_ = std::min(lastEvent_, active.end + ticks + 1);
    }
}

// Events change the pitch bend, all else changes between blocks.
void FastRenderer::updateDerivedSettings() {
    if (!settingsAreDerived_) {
        settingsAreDerived_ = true;
        cycle_.update();
        updateConstants();
        settingsAreInRange_ =
            cycle_.isReadable() && isInFastRange(settings_) && isInFastRange(envelopeSettings_);
    }
    bend_.hold(radiansPerHz());
    runIsInRange_ = settingsAreInRange_ && isBendInFastRange(settings_.bendRatio);
}

float FastRenderer::radiansPerHz() const {
    return static_cast<float>(2.0 * settings_.secondsPerSample * std::numbers::pi *
                              settings_.bendRatio);
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

// Fills in the levels of `active` up to sample `end` of the run, or to the end of its fade.
void FastRenderer::runEnvelope(ActiveVoice& active, std::int32_t end) const {
    if (active.end < end && active.envelope->isActive()) {
        active.end += zelvatone::runEnvelope(*active.envelope, dt_, end - active.end,
                                             active.levels + active.end);
    }
}

void FastRenderer::runEnvelopes(std::int32_t samples) {
    for (std::int32_t i = 0; i < voices_.count(); ++i) {
        ActiveVoice& active = voices_[i];
        runEnvelope(active, samples);
        if (active.end < samples) { // the fade has ended within the run
            slots_.notes[active.slot] = kFreeSlot;
        }
    }
}

// Voices that have joined the run have not been analysed yet, and all others are analysed anew if
// the pitch has bent.
void FastRenderer::analyseAgain(std::int32_t samples) {
    for (std::int32_t i = 0; i < voices_.count(); ++i) {
        ActiveVoice& active = voices_[i];
        if (active.first < samples && (active.first > 0 || bend_.phaseAdvance().varies)) {
            analyse(active, samples - active.first);
        }
    }
}

// Stretch by stretch. Voices that shift in the same sample stay together in all of them.
void FastRenderer::renderVoices() {
    for (std::int32_t i = 0; i < voices_.count(); ++i) {
        beginStretch(voices_[i]);
    }
    for (std::int32_t i = 0; i < voices_.count(); ++i) {
        while (voices_[i].stretch.samples > 0) {
            renderBatch(i);
        }
    }
}

// The first stretch of a run. Without changes it is the run, which has been analysed.
void FastRenderer::beginStretch(ActiveVoice& active) {
    if (active.changes) {
        nextStretch(active, active.first);
    } else {
        active.stretch = {active.first, active.end - active.first};
    }
}

// The next one, from `first` on.
void FastRenderer::nextStretch(ActiveVoice& active, std::int32_t first) {
    active.stretch =
        renderChanges(active.task(), first, active.end, {kernel_, constants_, scratch_, targets_});
    if (active.stretch.samples > 0) {
        active.traits = kernel_.analyse(bankOf(*active.voice), constants_, active.stretch.samples);
    }
}

// Renders the stretch of active voice `leader` and all that are like it, as far as they fit.
void FastRenderer::renderBatch(std::int32_t leader) {
    std::int32_t count = 0;
    std::int32_t lanesLeft = kBatchLanes;
    const auto [first, samples] = voices_[leader].stretch;
    const BankTraits traits = voices_[leader].traits;
    for (std::int32_t i = leader; i < voices_.count(); ++i) {
        ActiveVoice& active = voices_[i];
        if (!isSame(active.stretch, {first, samples}) || !isSame(active.traits, traits)) {
            continue;
        }
        lanesLeft -= (active.voice->activeCount + kSliceLanes - 1) / kSliceLanes * kSliceLanes;
        if (lanesLeft < 0) { // the next batch begins here
            break;
        }
        segments_[count] = segmentOf(active.task(), first);
        members_[count++] = &active;
    }
    kernel_.render(segments_.data(), count, samples, traits, constants_, scratch_);
    for (std::int32_t i = 0; i < count; ++i) {
        advanceClock(*members_[i]->voice, samples);
        nextStretch(*members_[i], first + samples);
    }
}

void FastRenderer::mixVoices(float* out, std::int32_t samples) {
    alignas(64) std::array<float, kRunSamples> sum{};
    alignas(64) std::array<float, kRunSamples> weight{};
    for (std::int32_t i = 0; i < voices_.count(); ++i) {
        const ActiveVoice& active = voices_[i];
        const std::int32_t first = active.first;
        kernel_.mix(sum.data() + first, weight.data() + first, active.samples + first,
                    active.levels + first, active.end - first);
    }
    alignas(64) std::array<float, kRunSamples> scaled;
    kernel_.finish(scaled.data(), sum.data(), weight.data(), samples);
    std::copy_n(scaled.begin(), samples, out);
}

} // namespace zelvatone
