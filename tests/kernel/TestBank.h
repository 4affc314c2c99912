// A bank of modes for a kernel, without a voice around it.
#pragma once

#include "engine/ModeArray.h"
#include "engine/ModeFlags.h"
#include "engine/fast/BendLine.h"
#include "engine/fast/DropFactors.h"
#include "engine/fast/ModeKernel.h"

#include <array>
#include <cstdint>

// `count` silent modes at 0 Hz, at rest; a table of one entry; 48 kHz.
struct TestBank {
    explicit TestBank(std::int32_t count) : count(count) {
        constants.phaseAdvance = &bend_.phaseAdvance();
        turn(1.3089969e-4F); // 2 pi / 48000
        constants.entriesPerRadian = 0.0F;
        constants.cycle = entries_.data();
        constants.indexLimit = 1.0F;
        constants.silentEntry = 1;
        drop(1.0F);
    }
    TestBank(const TestBank&) = delete;
    TestBank& operator=(const TestBank&) = delete;

    // Puts mode `i` on `hz`, as its target too.
    void rest(std::int32_t i, float hz) { freq[i] = targetFreq[i] = hz; }
    // Lets each Hz turn phases by so many radians a sample.
    void turn(float radiansPerHz) { bend_.hold(radiansPerHz); }
    // Lets all modes drop.
    void drop(float factor) {
        dropFactors_.update(factor, 1);
        dropFactors_.describe(constants);
    }
    // The whole bank from the first sample of a run on.
    zelvatone::Segment segment() {
        return {.modes = view(), .gain = 1.0F, .out = nullptr, .slot = 0, .sample = 0};
    }
    zelvatone::ModeBank view() {
        return {.amp = amp.data(),
                .freq = freq.data(),
                .phase = phase.data(),
                .ampStep = ampStep.data(),
                .freqStep = freqStep.data(),
                .targetAmp = targetAmp.data(),
                .targetFreq = targetFreq.data(),
                .reportedModes = reported_.words.data(),
                .count = count};
    }

    std::int32_t count;
    zelvatone::ModeArray amp = zeroes(), freq = zeroes(), phase = zeroes(), ampStep = zeroes(),
                         freqStep = zeroes(), targetAmp = zeroes(), targetFreq = zeroes();
    zelvatone::BlockConstants constants{};

private:
    static zelvatone::ModeArray zeroes() { return zelvatone::ModeArray(100); }

    std::array<float, 2> entries_ = {1.0F, 0.0F};
    zelvatone::BendLine bend_;
    zelvatone::DropFactors dropFactors_;
    zelvatone::ModeFlags reported_;
};
