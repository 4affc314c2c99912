// A voice on the bench: quiet settings, and ways to put its modes exactly where a test wants them.
#pragma once

#include "engine/ModeVoice.h"
#include "engine/WaveTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace zelvatone {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr std::int32_t kLowestInt = std::numeric_limits<std::int32_t>::min();

// Tells -0 from +0 and one NaN from another, where == does not.
inline std::uint32_t bitsOf(float value) {
    return std::bit_cast<std::uint32_t>(value);
}

// What `action` prints to standard output.
template<class Action>
std::string printedBy(Action action) {
    testing::internal::CaptureStdout();
    action();
    return testing::internal::GetCapturedStdout();
}

// The bench starts with a full-length sine table, no shifts, and a sample rate and "Blend Time"
// whose arithmetic is exact: 1024 samples a second, glides of 64 samples.
class VoiceBench : public testing::Test {
protected:
    VoiceBench() {
        settings_.secondsPerSample = 1.0 / 1024.0;
        settings_.blendSeconds = 1.0 / 16.0;
        settings_.tempo = 120.0;
        settings_.minModes = 0;
        settings_.maxModes = 100;
        neverShift();
        wave(0);
    }

    void wave(std::int32_t kind) {
        settings_.waveKind = kind;
        wavetable::build(settings_, 1024);
    }

    void neverShift() { settings_.shiftBeats = std::numeric_limits<double>::infinity(); }

    // One sample in which a shift takes place, whatever the clock says.
    float tickWithShift() {
        settings_.shiftBeats = 0.0;
        const float out = voice_.tick();
        neverShift();
        return out;
    }

    void tick(int samples) {
        for (int n = 0; n < samples; ++n) {
            voice_.tick();
        }
    }

    // Mode `i` stands on its target. The bank grows to hold it.
    void place(std::int32_t i, float amp, float freq, float phase = 0.0F) {
        voice_.amp[i] = amp;
        voice_.freq[i] = freq;
        voice_.phase[i] = phase;
        aim(i, amp, freq);
        voice_.activeCount = std::max(voice_.activeCount, i + 1);
        voice_.targetCount = std::max(voice_.targetCount, i + 1);
    }

    void aim(std::int32_t i, float targetAmp, float targetFreq) {
        voice_.targetAmp[i] = targetAmp;
        voice_.targetFreq[i] = targetFreq;
    }

    VoiceSettings settings_;
    ModeVoice voice_{&settings_};
};

} // namespace zelvatone
