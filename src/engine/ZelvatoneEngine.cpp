#include "engine/ZelvatoneEngine.h"

#include "engine/ParameterReading.h"
#include "engine/ReferenceRenderer.h"
#include "engine/WaveTable.h"
#include "engine/fast/FastRenderer.h"
#include "params/FactoryPrograms.h"
#include "params/SharedValue.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zelvatone {

namespace {

static_assert(FastRenderer::kSlots == ZelvatoneEngine::kVoiceCount);

constexpr SynthIdentity kIdentity{.numInputs = 0,
                                  .numOutputs = 2,
                                  .effectName = "Zelvatone",
                                  .vendorName = "Quillfeather",
                                  .productName = "Zelvatone",
                                  .vendorVersion = 1};

// MIDI note 0, five octaves and a major sixth below the 440 Hz of note 69.
constexpr double kLowestNoteHz = 8.175798915636872;
// A semitone. Cut to 13 digits; the running product over 127 notes is part of the tuning.
constexpr double kSemitone = 1.059463094359;

} // namespace

ZelvatoneEngine::ZelvatoneEngine(Renderer renderer)
    : ZelvatoneEngine(makeFactoryBank(), renderer) {}

ZelvatoneEngine::ZelvatoneEngine(ProgramBank bank, Renderer renderer)
    : SynthEngine(kVoiceCount, kIdentity),
      shaper(std::make_unique<PolyShaper>()),
      settings(std::make_unique<VoiceSettings>()),
      envelopeSettings(std::make_unique<EnvelopeSettings>()) {
    programs = std::move(bank);
    currentProgram = &programs.front();

    double frequency = kLowestNoteHz;
    for (float& note : noteFrequency) {
        note = static_cast<float>(frequency);
        frequency *= kSemitone;
    }

    wavetable::build(*settings, settings->tableSize);
    for (std::int32_t slot = 0; slot < kVoiceCount; ++slot) {
        voices.push_back(std::make_unique<ModeVoice>(settings.get()));
        envelopes.push_back(std::make_unique<ADSR>(envelopeSettings.get()));
    }
    if (const ModeKernel* kernel = kernelOf(renderer)) {
        fastRenderer_ =
            std::make_unique<FastRenderer>(*kernel, slots(), *settings, *envelopeSettings);
    }
}

ZelvatoneEngine::~ZelvatoneEngine() = default;

void ZelvatoneEngine::setSampleRate(float rate) {
    SynthEngine::setSampleRate(rate);
    settings->secondsPerSample = 1.0 / static_cast<double>(rate);
}

void ZelvatoneEngine::noteOn(std::int32_t note, std::int32_t velocity) {
    const auto free = std::find(voiceNotes.rbegin(), voiceNotes.rend(), kFreeSlot);
    if (free == voiceNotes.rend()) {
        return;
    }
    *free = note;
    const auto slot = voiceNotes.rend() - free - 1;
    const float frequency = noteFrequency[note & 127];
    if (fastRenderer_ != nullptr) {
        fastRenderer_->startVoice(static_cast<std::int32_t>(slot), frequency);
    } else {
        voices[slot]->start(frequency);
    }
    envelopes[slot]->trigger(static_cast<float>(velocity / 127.0));
}

void ZelvatoneEngine::noteOff(std::int32_t note) {
    for (std::int32_t slot = 0; slot < voiceCount; ++slot) {
        if (voiceNotes[slot] == note) {
            voiceNotes[slot] = kReleasedSlot;
            if (fastRenderer_ != nullptr) {
                fastRenderer_->releaseVoice(slot);
            } else {
                envelopes[slot]->release();
            }
        }
    }
}

void ZelvatoneEngine::pitchBend(float amount) {
    settings->bendRatio = std::pow(2.0, static_cast<double>(amount));
    if (fastRenderer_ != nullptr) {
        fastRenderer_->followBend();
    }
}

void ZelvatoneEngine::stopSound() {
    discardEvents();
    std::fill(voiceNotes.begin(), voiceNotes.end(), kFreeSlot);
    for (const auto& envelope : envelopes) {
        *envelope = ADSR(envelopeSettings.get());
    }
    for (const auto& voice : voices) {
        voice->forgetLastNote();
    }
}

bool ZelvatoneEngine::isSilent() const {
    return events.available() == 0 &&
           std::none_of(envelopes.begin(), envelopes.end(),
                        [](const auto& envelope) { return envelope->isActive(); });
}

void ZelvatoneEngine::render(float** /*inputs*/, float** outputs, std::int32_t sampleFrames) {
    // A list of its own, because the host may switch programs on another thread meanwhile.
    const ParameterList parameters = loadShared(currentProgram)->parameters;
    settings->tempo = static_cast<double>(tempo);
    readVoiceSettings(parameters, *settings);
    readEnvelopeSettings(parameters, *envelopeSettings);
    shaper->select(readShaperSet(parameters));
    if (sampleFrames <= 0) {
        return; // `outputs` may be null
    }
    if (fastRenderer_ == nullptr) {
        renderReference(outputs[0], sampleFrames);
    } else {
        renderFast(outputs[0], sampleFrames);
    }
    std::copy_n(outputs[0], sampleFrames, outputs[1]);
}

void ZelvatoneEngine::renderReference(float* out, std::int32_t samples) {
    const VoiceSlots all = slots();
    for (std::int32_t n = 0; n < samples; ++n) {
        runEventPass();
        out[n] = renderReferenceSample(all, sampleSeconds());
    }
}

void ZelvatoneEngine::renderFast(float* out, std::int32_t samples) {
    fastRenderer_->beginBlock(sampleSeconds());
    std::int32_t done = 0;
    std::int32_t passes = 0; // event passes that have run for the samples to come
    while (done < samples) {
        const std::int32_t limit = std::min(samples - done, kRunSamples);
        if (passes == 0) {
            passes = runQuietEventPasses(limit);
        }
        if (passes == 0) {
            runEventPass();
            passes = 1;
        }
        std::int32_t run = passes;
        if (fastRenderer_->beginRun(limit)) {
            run = runEventPassesWithin(passes, limit);
            fastRenderer_->finishRun(out + done, run);
        } else {
            std::generate_n(out + done, run,
                            [this] { return renderReferenceSample(slots(), sampleSeconds()); });
        }
        done += run;
        passes -= run;
    }
}

// The first `passes` passes of a run of up to `limit` samples have run before it began. Runs the
// others, as far as the run can take the events, and returns its length.
std::int32_t ZelvatoneEngine::runEventPassesWithin(std::int32_t& passes, std::int32_t limit) {
    while (passes < limit) {
        passes += runQuietEventPasses(limit - passes);
        if (passes == limit) {
            break;
        }
        if (!nextPassIsOfEngineEvents() || !fastRenderer_->moveTo(passes)) {
            return passes;
        }
        runEventPass();
        ++passes;
        if (!fastRenderer_->runIsInRange()) {
            return passes - 1;
        }
    }
    return limit;
}

VoiceSlots ZelvatoneEngine::slots() {
    return {.notes = voiceNotes, .voices = voices, .envelopes = envelopes};
}

} // namespace zelvatone
