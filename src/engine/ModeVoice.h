// A note's sound: a bank of up to 100 partials, called modes, each with its own amplitude,
// frequency and phase, all read from the shared wave table.
#pragma once

#include "engine/VoiceSettings.h"

#include <cstdint>
#include <vector>

namespace zelvatone {

// The largest number of modes that any setting asks for: "Min Modes", "Max Modes" and "Mode Init"
// all end there.
constexpr std::int32_t kMaxModeCount = 100;

// The bank is plain data in parallel arrays, one element a mode. All operations run on the audio
// thread and read the shared settings at the moment they run. Nothing is allocated after
// construction unless fillModes asks for more than kMaxModeCount modes.
class ModeVoice {
public:
    // `settings` is not owned and must outlive the voice.
    explicit ModeVoice(const VoiceSettings* settings);

    // Begins a note at `frequency` Hz: the modes stand on their targets at once, every phase at 0.
    void start(float frequency);
    // Returns this sample and moves the bank on by one sample.
    float tick();

    // Fills the targets of modes 0..count-1 for the note's frequency. `count`: 0..capacity.
    void computeTargets(std::int32_t count);
    // Scales the target amplitudes of modes 0..count-1 to sum 1, where they sum to more than 0.
    void normaliseTargets(std::int32_t count);
    // Does the same for the current amplitudes of the active modes.
    void normaliseAmplitudes();
    // Makes the arrays at least `count` long; growing them clears them.
    void ensureCapacity(std::int32_t count);
    // Sets `count` modes directly, without a glide, by the settings' modeKind. The engine never
    // calls it: it is for looking at a mode set by itself. Prints a line for 0 modes and for an
    // unknown kind.
    void fillModes(std::int32_t count);
    // Prints the active modes to standard output.
    void dumpModes() const;

    std::int32_t capacity = 0;     // length of each of the seven arrays
    std::vector<float> amp;        // current amplitudes
    std::vector<float> freq;       // current frequencies, Hz; legally negative
    std::vector<float> phase;      // radians
    std::vector<float> ampStep;    // amplitude change a sample while gliding
    std::vector<float> freqStep;   // Hz a sample while gliding
    std::vector<float> targetAmp;  // where the amplitudes glide to
    std::vector<float> targetFreq; // where the frequencies glide to, Hz
    float gain = 0.5F;             // output scale: leaves headroom for the mix
    float baseFreq = 0.0F;         // the note's frequency, Hz
    std::int32_t activeCount = 0;  // modes that are summed and advanced
    std::int32_t targetCount = 0;  // modes in the current target set
    float time = 0.0F;             // seconds since the note started
    const VoiceSettings* settings;

private:
    float sumModes() const;
    void update();
    void glide();
    void trim();
    bool shiftIsDue() const;
    void shift();
    std::int32_t nextModeCount() const;
    void admitModes(std::int32_t count);
    void dismissModes(std::int32_t count);
    void computeSteps(std::int32_t count);
    void advance();
    void dropFrequency(std::int32_t mode);
    void shapeHarmonic(std::int32_t k, float& frequency, float& amplitude) const;
    void fillSingle(std::int32_t count);
    void fillCluster(std::int32_t count);
    void fillHarmonic(std::int32_t count);
};

} // namespace zelvatone
