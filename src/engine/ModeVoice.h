// A note's sound: a bank of up to 100 partials, called modes, each with its own amplitude,
// frequency and phase, all read from the shared wave table.
#pragma once

#include "engine/ModeArray.h"
#include "engine/ModeCount.h"
#include "engine/ModeFlags.h"
#include "engine/VoiceSettings.h"

#include <cstdint>

namespace zelvatone {

// The bank is plain data in parallel arrays, one element a mode. All operations run on the audio
// thread and read the shared settings at the moment they run. Nothing is allocated after
// construction unless fillModes needs more than kMaxModeCount modes.
class ModeVoice {
public:
    // `settings` is not owned and must outlive the voice.
    explicit ModeVoice(const VoiceSettings* settings);

    // Begins a note at `frequency` Hz: the modes stand on their targets at once, every phase at 0.
    void start(float frequency);
    // Leaves nothing of earlier notes: the next one sounds as in a new voice.
    void forgetLastNote();
    // Returns this sample and moves the bank on by one sample.
    float tick();

    // What start and tick are made of, for a renderer of whole runs. It fills in the targets of
    // the modes counted between the two halves of a start, and of a shift.

    // Sets the clock, the frequency in Hz and the counts of a note's start.
    void beginNote(float frequency);
    // Puts all modes where a note's start has them.
    void standOnTargets();
    // Seconds between shifts at the current tempo.
    float shiftPeriod() const;
    // Whether the sample that begins `seconds` after the note's start ends with a shift.
    bool shiftIsDue(float seconds) const;
    // How many modes the next shift has, 0 to kMaxModeCount.
    std::int32_t nextModeCount() const;
    // Sends the modes on towards targets for `count` of them, letting modes in or out.
    void glideToTargets(std::int32_t count);
    // Drops trailing modes that have faded out. A silent mode below a sounding one stays counted.
    void trim();

    // Fills the targets of modes 0..count-1 for the note's frequency. `count`: 0..capacity.
    void computeTargets(std::int32_t count);
    // Scales the target amplitudes of modes 0..count-1 to sum 1, where they sum to more than 0.
    void normaliseTargets(std::int32_t count);
    // Does the same for the current amplitudes of the active modes.
    void normaliseAmplitudes();
    // Makes the arrays at least `count` long; growing them clears them.
    void ensureCapacity(std::int32_t count);
    // Sets `count` modes directly, without a glide, by the settings' modeKind. The engine never
    // calls it: it is for inspecting a mode set by itself. Prints a line for 0 modes and for an
    // unknown kind.
    void fillModes(std::int32_t count);
    // Prints the active modes to standard output.
    void dumpModes() const;

    std::int32_t capacity = 0;    // length of each of the seven arrays
    ModeArray amp;                // current amplitudes
    ModeArray freq;               // current frequencies, Hz; legally negative
    ModeArray phase;              // radians
    ModeArray ampStep;            // amplitude change a sample while gliding
    ModeArray freqStep;           // Hz a sample while gliding
    ModeArray targetAmp;          // where the amplitudes glide to
    ModeArray targetFreq;         // where the frequencies glide to, Hz
    float gain = 0.5F;            // output scale: leaves headroom for the mix
    float baseFreq = 0.0F;        // the note's frequency, Hz
    std::int32_t activeCount = 0; // modes that are summed and advanced
    std::int32_t targetCount = 0; // modes in the current target set
    float time = 0.0F;            // seconds since the note started
    const VoiceSettings* settings;
    // The modes whose failed look-up has been printed since the note started.
    ModeFlags reportedModes;

private:
    float sumModes();
    void reportFailedLookup(std::int32_t mode);
    void update();
    void glide();
    void shift();
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
