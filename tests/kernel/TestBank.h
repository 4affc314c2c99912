// A bank of modes for a kernel, without a voice around it.
#pragma once

#include "engine/ModeArray.h"
#include "engine/fast/ModeKernel.h"

#include <array>
#include <cstdint>

// `count` silent modes at 0 Hz, at rest; a table of one entry; 48 kHz.
struct TestBank {
    explicit TestBank(std::int32_t count) : count(count) {
        dropFactors_.fill(1.0F);
        constants.radiansPerHz = 1.3089969e-4F; // 2 pi / 48000
        constants.entriesPerRadian = 0.0F;
        constants.cycle = &entry_;
        constants.dropFactors = dropFactors_.data();
        constants.dropGrowth = 1.0F;
    }
    TestBank(const TestBank&) = delete;
    TestBank& operator=(const TestBank&) = delete;

    // Puts mode `i` on `hz`, as its target too.
    void rest(std::int32_t i, float hz) { freq[i] = targetFreq[i] = hz; }
    // Lets all modes drop.
    void drop(float factor) {
        dropFactors_.fill(factor);
        constants.drops = true;
        constants.dropsGliding = true;
        constants.dropGrowth = 2.0F;
    }
    zelvatone::ModeBank view() {
        return {.amp = amp.data(),
                .freq = freq.data(),
                .phase = phase.data(),
                .ampStep = ampStep.data(),
                .freqStep = freqStep.data(),
                .targetAmp = targetAmp.data(),
                .targetFreq = targetFreq.data(),
                .count = count};
    }

    std::int32_t count;
    zelvatone::ModeArray amp = zeroes(), freq = zeroes(), phase = zeroes(), ampStep = zeroes(),
                         freqStep = zeroes(), targetAmp = zeroes(), targetFreq = zeroes();
    zelvatone::BlockConstants constants{};

private:
    static zelvatone::ModeArray zeroes() { return zelvatone::ModeArray(100); }

    float entry_ = 1.0F;
    std::array<float, zelvatone::kPaddedModes> dropFactors_{};
};
