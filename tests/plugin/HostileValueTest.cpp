// Numbers that no sane host sends. The output may then be anything. The process must not crash,
// under the sanitizers too, and the plug-in must go on working.
#include "tests/plugin/LoadedPlugin.h"

#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr VstInt32 kFrames = 64;
constexpr VstInt32 kParameters = 23;

class HostileValue : public LoadedPluginTest {
protected:
    // The engine prints look-ups of phases that are not a number on standard output.
    HostileValue() { testing::internal::CaptureStdout(); }
    ~HostileValue() override { testing::internal::GetCapturedStdout(); }

    // Notes before and after the change, held and released.
    void playThrough() {
        plugin.send({{0x90, 60, 100}, {0x90, 61, 100}, {0x80, 60, 0, 30}, {0xE0, 127, 127, 40}});
        plugin.render(kFrames);
        plugin.send({{0x90, 127, 127}, {0x90, 0, 1}, {0xB0, 123, 0}});
        plugin.render(kFrames);
        EXPECT_EQ(plugin.text(effGetEffectName), "Zelvatone");
    }
};

TEST_F(HostileValue, IsSurvivedAsSampleRate) {
    for (const float rate :
         {0.0F, -44100.0F, std::nanf(""), kInfinity, -kInfinity, 1e-38F, 3e38F}) {
        EXPECT_EQ(plugin.ask(effSetSampleRate, 0, 0, nullptr, rate), 0);
        playThrough();
    }
}

TEST_F(HostileValue, IsForgottenWithTheNextSampleRate) {
    plugin.ask(effSetSampleRate, 0, 0, nullptr, std::nanf(""));
    plugin.render(kFrames);
    plugin.ask(effSetSampleRate, 0, 0, nullptr, 44100.0F);
    const LoadedPlugin other;
    plugin.send({kNoteOn});
    other.send({kNoteOn});
    EXPECT_TRUE(plugin.render(kFrames) == other.render(kFrames));
}

TEST_F(HostileValue, IsSurvivedAsBlockSize) {
    for (const VstIntPtr size : {VstIntPtr{0}, VstIntPtr{-1}, VstIntPtr{INT_MAX},
                                 VstIntPtr{INT_MIN}, INTPTR_MAX, INTPTR_MIN}) {
        EXPECT_EQ(plugin.ask(effSetBlockSize, 0, size), 0);
        playThrough();
    }
}

TEST_F(HostileValue, IsSurvivedAsTempo) {
    constexpr VstInt32 modeShift = 0;
    constexpr VstInt32 shiftInterval = 1;
    plugin.setParameter(modeShift, 1.0F);
    plugin.setParameter(shiftInterval, 0.0F);
    for (const double tempo : {0.0, -120.0, std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300, 1e-300}) {
        const VstTimeInfo time = timeWithTempo(tempo);
        host.setTime(&time);
        playThrough();
    }
}

TEST_F(HostileValue, IsSurvivedAsEveryParameter) {
    for (const float value : {std::nanf(""), kInfinity, -kInfinity, 3e38F, -3e38F, 1e-45F}) {
        for (VstInt32 i = 0; i < kParameters; ++i) {
            plugin.setParameter(i, value);
            playThrough();
        }
    }
}

TEST_F(HostileValue, IsSurvivedAsOffset) {
    for (const VstInt32 offset : {-1, -1000, INT_MIN, INT_MIN + 1, INT_MAX, 1 << 20}) {
        plugin.send({{0x90, 60, 100, offset}, {0x80, 60, 0, offset}, {0xE0, 0, 64, offset}});
        playThrough();
    }
}

TEST_F(HostileValue, IsSurvivedAsEventCrowd) {
    EventList crowd;
    for (int i = 0; i < 600; ++i) { // more than the queue holds
        crowd.add({i % 3 == 0 ? 0x80 : 0x90, i & 127, 1 + i % 127, i % 100});
    }
    EXPECT_EQ(plugin.send(crowd), 1);
    playThrough();
}

TEST_F(HostileValue, IsSurvivedAsRequestArguments) {
    for (VstInt32 request = -3; request < 100; ++request) {
        const bool needsAPlaceInMemory = request == effGetSpeakerArrangement; // in its value
        if (request == effClose || request == effEditOpen || needsAPlaceInMemory) {
            continue;
        }
        for (const VstInt32 index : {1000, INT_MAX}) { // a negative one may end the process
            plugin.ask(request, index, INTPTR_MAX, nullptr, std::nanf(""));
            plugin.ask(request, index, INTPTR_MIN, nullptr, kInfinity);
        }
    }
    playThrough();
}

} // namespace
