// An active instance of zelvatone.clap, for tests.
#pragma once

#include "tests/clap/host/ClapInstance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace zelvatone::test {

// Loaded at the first call.
const ClapLibrary& clapLibrary();

inline constexpr const char* kClapId = "com.quillfeather.zelvatone";
inline constexpr double kClapRate = 44100.0;
inline constexpr std::uint32_t kClapFrames = 2048; // the longest block

class ClapTest : public testing::Test {
protected:
    ClapTest() { instance_.activate(kClapRate, kClapFrames); }
    ~ClapTest() override { EXPECT_TRUE(instance_.faults.empty()) << instance_.faults.front(); }

    // Plays what stands in `events_`, which is empty afterwards.
    std::vector<float> play(std::uint32_t frames, clap::ProcessStatus* status = nullptr) {
        const ClapInstance::Sound sound = instance_.play(frames, events_, sent_, nullptr, status);
        events_.clear();
        return sound.at(0);
    }
    static bool isSilent(const std::vector<float>& samples) {
        return std::ranges::all_of(samples, [](float s) { return s == 0.0F; });
    }
    double value(std::uint32_t id) const {
        double value = -1e9;
        const auto* params = instance_.extension<clap::PluginParams>(clap::kParamsId);
        EXPECT_TRUE(params->getValue(&instance_.plugin(), id, &value));
        return value;
    }

    ClapInstance instance_{clapLibrary(), kClapId};
    InputList events_;
    OutputList sent_;
};

} // namespace zelvatone::test
