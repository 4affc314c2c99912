// The instrument: 32 voices, each a mode bank under its own envelope, mixed to one signal.
#pragma once

#include "engine/ADSR.h"
#include "engine/ModeVoice.h"
#include "engine/PolyShaper.h"
#include "engine/SynthEngine.h"
#include "engine/fast/KernelChoice.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace zelvatone {

class FastRenderer;

class ZelvatoneEngine final : public SynthEngine {
public:
    static constexpr std::int32_t kVoiceCount = 32;

    // Builds the bank, the wave table and all voices. Program 0, "Default", is current. Every
    // renderer makes the same sound to the last bit; this processor must support `renderer`.
    explicit ZelvatoneEngine(Renderer renderer = widestRenderer());
    // The same with a bank of one's own, which is not empty. Its entry 0 is current.
    explicit ZelvatoneEngine(ProgramBank bank, Renderer renderer = widestRenderer());
    ~ZelvatoneEngine();

    void render(float** inputs, float** outputs, std::int32_t sampleFrames) override;
    void setSampleRate(float rate) override;
    // Takes the free slot with the highest index. Without one the note is dropped: a note that
    // sounds is never cut off for a new one.
    void noteOn(std::int32_t note, std::int32_t velocity) override;
    // Releases every slot that holds `note`.
    void noteOff(std::int32_t note) override;
    void pitchBend(float amount) override;

    // Ends all notes without their releases and discards waiting events: what is played next sounds
    // as it does on a new engine with the same settings. Audio thread, between two blocks, as is
    // the next.
    void stopSound();
    // Whether blocks without new events will be silent.
    bool isSilent() const;

    std::array<float, 128> noteFrequency{}; // Hz by MIDI note
    std::vector<std::unique_ptr<ModeVoice>> voices;
    std::vector<std::unique_ptr<ADSR>> envelopes;
    std::unique_ptr<PolyShaper> shaper;
    std::unique_ptr<VoiceSettings> settings;
    std::unique_ptr<EnvelopeSettings> envelopeSettings;

private:
    VoiceSlots slots();
    double sampleSeconds() const { return 1.0 / static_cast<double>(sampleRate); }
    void renderReference(float* out, std::int32_t samples);
    void renderFast(float* out, std::int32_t samples);
    std::int32_t runEventPassesWithin(std::int32_t& passes, std::int32_t limit);

    std::unique_ptr<FastRenderer> fastRenderer_; // null: the reference renderer, sample by sample
};

} // namespace zelvatone
