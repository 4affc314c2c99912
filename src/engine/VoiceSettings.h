// The two records that all voices and all envelopes share. The engine writes them at the start of
// every block; voices and envelopes only read.
#pragma once

#include <cstdint>
#include <memory>
#include <new>

namespace zelvatone {

// Wave tables lie on 16-byte boundaries, the width of the narrowest vector unit that reads them.
constexpr std::align_val_t kTableAlignment{16};

struct TableFree {
    void operator()(float* table) const { ::operator delete[](table, kTableAlignment); }
};

struct VoiceSettings {
    std::int32_t tableSize = 1024; // entries in one cycle
    std::unique_ptr<float[], TableFree> table;
    double secondsPerSample = 1.0 / 44100.0;
    // Which rule ModeVoice::fillModes follows: 0 single, 1 cluster, 2 harmonic.
    std::int32_t modeKind = 2;
    std::int32_t initialModes = 10; // "Mode Init"
    float clusterOffsetHz = 0.0F;   // these three: mode kind 1 only
    float clusterScale = 1.0F;      //
    float clusterWidthHz = 3000.0F; //
    double tempo = 0.0;             // beats per minute; this block's
    double shiftBeats = 0.5;        // "Shift Interval" as beats
    std::int32_t modeShift = 0;     // "Mode Shift"
    std::int32_t minModes = 3;      // "Min Modes"
    std::int32_t maxModes = 20;     // "Max Modes"
    float falloff = -1.0F;          // "Falloff"
    float parity = 0.0F;            // "Parity"
    float jitterHz = 0.0F;          // "Jitter"
    float dropFactor = 1.0F;        // "Freq Drop" as a factor per sample
    std::int32_t dropModulus = 1;   // "Drop Mod"
    float chop = 1.0F;              // "Chop"
    std::int32_t primeModes = 0;    // "Modes"
    float detune = 0.5F;            // "Detune"
    float primePower = 0.5F;        // "Power"
    std::int32_t waveKind = 0;      // "Wave"
    std::int32_t crushBits = 0;     // "Crush"
    double blendSeconds = 0.01;     // "Blend Time"
    float exitPeel = 0.0F;          // "Exit Peel"
    double bendRatio = 1.0;         // pitch bend as a frequency ratio
};

struct EnvelopeSettings {
    double attack = 0.2;  // seconds
    double decay = 0.1;   // seconds
    double sustain = 0.7; // level, 0 to 1
    double release = 0.3; // seconds
};

} // namespace zelvatone
