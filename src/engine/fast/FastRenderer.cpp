#include "engine/fast/FastRenderer.h"

#include "engine/ZelvatoneEngine.h"
#include "engine/fast/Calm.h"
#include "engine/fast/EnvelopeRun.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zelvatone {

namespace {

static_assert(FastRenderer::kSlots == ZelvatoneEngine::kVoiceCount);
static_assert(kPaddedModes >= kMaxModeCount);

bool isSame(const Outlook& a, const Outlook& b) {
    return a.loudnessMoves == b.loudnessMoves && a.course == b.course && a.wrap == b.wrap;
}

} // namespace

FastRenderer::FastRenderer(const ModeKernel& kernel, ZelvatoneEngine& engine)
    : kernel(kernel),
      engine(engine),
      targets(engine.settings.get()),
      cycle(engine.settings.get()) {}

void FastRenderer::startVoice(ModeVoice& voice, float frequency) {
    if (!isCalm(*engine.settings)) {
        voice.start(frequency);
        return;
    }
    voice.beginNote(frequency);
    targets.fill(voice, voice.activeCount);
    voice.standOnTargets();
}

bool FastRenderer::render(float* out, std::int32_t samples) {
    collectParts();
    if (partCount == 0) {
        std::fill_n(out, samples, 0.0F);
        return true;
    }
    if (!knowSettings() || !partsAreCalm(samples)) {
        return false;
    }
    runEnvelopes(samples);
    renderParts(samples);
    mixParts(out, samples);
    return true;
}

// Slots whose note has faded become free, the others are parts of this run, in slot order.
void FastRenderer::collectParts() {
    partCount = 0;
    for (std::int32_t slot = 0; slot < kSlots; ++slot) {
        std::int32_t& note = engine.voiceNotes[slot];
        if (note == SynthEngine::kFreeSlot) {
            continue;
        }
        if (!engine.envelopes[slot]->isActive()) {
            note = SynthEngine::kFreeSlot;
            continue;
        }
        Part& part = parts[partCount++];
        part.slot = slot;
        part.voice = engine.voices[slot].get();
        part.envelope = engine.envelopes[slot].get();
    }
}

// Brings everything that is derived from the settings up to date. Events change the pitch bend
// between runs, all else changes between blocks.
bool FastRenderer::knowSettings() {
    const VoiceSettings& settings = *engine.settings;
    if (!settingsAreKnown) {
        settingsAreKnown = true;
        settingsAreCalm = isCalm(settings) && isCalm(*engine.envelopeSettings) && cycle.renew();
        renewMotion();
    }
    motion.radiansPerHz =
        static_cast<float>(2.0 * settings.secondsPerSample * std::numbers::pi * settings.bendRatio);
    return settingsAreCalm;
}

void FastRenderer::renewMotion() {
    motion.entriesPerRadian = cycle.entriesPerRadian();
    motion.cycle = cycle.middle();
    const float factor = engine.settings->dropFactor;
    const std::int32_t modulus = engine.settings->dropModulus;
    if (motion.dropFactors != nullptr && factor == dropFactor && modulus == dropModulus) {
        return;
    }
    dropFactor = factor;
    dropModulus = modulus;
    for (std::int32_t mode = 0; mode < kPaddedModes; ++mode) {
        dropFactors[mode] = modulus < 2 || mode % modulus == 1 ? factor : 1.0F;
    }
    motion.dropFactors = dropFactors.data();
    motion.drops = factor != 1.0F;
    motion.dropsGliding = modulus < 2;
    motion.dropGrowth = std::pow(std::max(factor, 1.0F), float{kRunSamples});
}

bool FastRenderer::partsAreCalm(std::int32_t samples) {
    return std::all_of(parts.begin(), parts.begin() + partCount,
                       [&](Part& part) { return foresee(part, samples); });
}

// Fills in what lies ahead of `part`; answers whether all of that is calm.
bool FastRenderer::foresee(Part& part, std::int32_t samples) {
    if (!isCalm(*part.voice) || !isCalm(*part.envelope)) {
        return false;
    }
    ModeBank bank = bankOf(*part.voice);
    part.outlook = kernel.foresee(bank, motion, samples);
    if (!part.outlook.calm) {
        return false;
    }
    part.changes = samplesBeforeChange(*part.voice, samples) < samples;
    if (part.changes) { // modes may enter with what they hold from earlier
        bank.count = kMaxModeCount;
        return kernel.foresee(bank, motion, samples).calm;
    }
    return true;
}

void FastRenderer::runEnvelopes(std::int32_t samples) {
    const double dt = 1.0 / static_cast<double>(engine.sampleRate);
    for (std::int32_t i = 0; i < partCount; ++i) {
        Part& part = parts[i];
        part.samples = runEnvelope(*part.envelope, dt, samples, buffers[i].levels);
        if (part.samples < samples) { // the envelope has ended within the run
            engine.voiceNotes[part.slot] = SynthEngine::kFreeSlot;
        }
    }
}

// Voices in which nothing changes for the whole run wait for others like them, the rest is rendered
// at once.
void FastRenderer::renderParts(std::int32_t samples) {
    for (std::int32_t i = 0; i < partCount; ++i) {
        Part& part = parts[i];
        part.isRendered = part.changes || part.outlook.huge || part.samples < samples;
        if (part.isRendered) {
            renderVoice(*part.voice, part.samples, buffers[i].samples,
                        {kernel, motion, scratch, targets});
        }
    }
    for (std::int32_t i = 0; i < partCount; ++i) {
        if (!parts[i].isRendered) {
            renderBatch(i, samples);
        }
    }
}

// Part `first` and all that wait like it, as far as they fit.
void FastRenderer::renderBatch(std::int32_t first, std::int32_t samples) {
    std::array<Segment, kSlots> segments;
    std::int32_t count = 0;
    std::int32_t lanesLeft = kBatchLanes;
    for (std::int32_t i = first; i < partCount; ++i) {
        Part& part = parts[i];
        const ModeBank bank = bankOf(*part.voice);
        const std::int32_t lanes = (bank.count + kernel.lanes - 1) / kernel.lanes * kernel.lanes;
        if (part.isRendered || !isSame(part.outlook, parts[first].outlook) || lanes > lanesLeft) {
            continue;
        }
        lanesLeft -= lanes;
        segments[count++] = {bank, part.voice->gain, buffers[i].samples};
        advanceClock(*part.voice, samples);
        part.isRendered = true;
    }
    kernel.render(segments.data(), count, samples, parts[first].outlook, motion, scratch);
}

void FastRenderer::mixParts(float* out, std::int32_t samples) {
    alignas(64) std::array<float, kRunSamples> sum{};
    alignas(64) std::array<float, kRunSamples> weight{};
    for (std::int32_t i = 0; i < partCount; ++i) {
        kernel.mix(sum.data(), weight.data(), buffers[i].samples, buffers[i].levels,
                   parts[i].samples);
    }
    alignas(64) std::array<float, kRunSamples> scaled;
    kernel.finish(scaled.data(), sum.data(), weight.data(), samples);
    std::copy_n(scaled.begin(), samples, out);
}

} // namespace zelvatone
