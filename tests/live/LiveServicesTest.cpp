// What a plug-in that plays live hears from the host.
#include "host/plugin/HostServices.h"
#include "live/player/LivePlayer.h"
#include "tests/live/TakeSession.h"
#include "tests/support/Program.h"
#include "tests/support/plugins/PulseLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <thread>

namespace zelvatone {
namespace {

// Two places that are always set to the same number: a mixture of two records would differ.
TEST(LiveServices, HandOutWholeTimesWhileTheyChange) {
    HostServices services({48000.0, 64}, "");
    AEffect effect{};
    services.attachTo(&effect);
    std::jthread writer([&services](const std::stop_token& stop) {
        VstTimeInfo time{};
        while (!stop.stop_requested()) {
            time.cycleEndPos = ++time.samplePos;
            services.setTime(time);
            std::this_thread::yield(); // without any rest there is no whole record to be read
        }
    });
    for (int i = 0; i < 1000000; ++i) {
        const auto* time = reinterpret_cast<const VstTimeInfo*>(
            HostServices::callback(&effect, audioMasterGetTime, 0, 0, nullptr, 0.0F));
        ASSERT_EQ(time->samplePos, time->cycleEndPos);
    }
}

std::vector<VstIntPtr> levelsSeenBy(HostedPlugin& plugin) {
    return reinterpret_cast<PulseLog*>(plugin.request(effVendorSpecific, kPulseLogRequest))
        ->processLevels;
}

// 2 in the interface's numbers: in real time. A plug-in that renders offline may take its time.
TEST(LiveServices, TellPluginsThatTheyPlayInRealTime) {
    const PluginLibrary library(testPlugin("pulse"));
    const StreamFormat format{48000.0, 64};
    HostedPlugin plugin(library, format);
    HostedPlugin spare(library, format);
    const Song song = songWithoutEvents();
    LivePlayer player({.plugin = &plugin, .spare = &spare, .song = &song});
    std::array<float, 64> left{};
    std::array<float, 64> right{};
    // All sound off goes on with the spare.
    const std::array<MidiMessage, 2> messages{midiMessage(0, kNoteOnStatus, 60, 100),
                                              midiMessage(32, kControllerStatus, kAllSoundOff, 0)};
    player.process(left.data(), right.data(), 64, messages);
    EXPECT_THAT(levelsSeenBy(plugin), ::testing::Contains(2));
    EXPECT_THAT(levelsSeenBy(plugin), ::testing::Each(2));
    EXPECT_THAT(levelsSeenBy(spare), ::testing::Contains(2));
    EXPECT_THAT(levelsSeenBy(spare), ::testing::Each(2));
}

} // namespace
} // namespace zelvatone
