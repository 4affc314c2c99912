#include "host/render/InstrumentPlayer.h"

#include "host/Error.h"
#include "host/midi/MidiFileReader.h"
#include "tests/support/MidiFileBuilder.h"
#include "tests/support/Program.h"
#include "tests/support/plugins/PulseLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;

// At 1000 Hz and 500 ticks a quarter of half a second, a tick is a sample. At tick 500 the tempo
// halves, and a tick lasts two samples.
constexpr double kRate = 1000.0;

Song pulses() {
    return makeSong(
        parseMidiFile(midiFileBytes(1, 500,
                                    {TrackBytes().tempo(500, 1000000),
                                     TrackBytes()
                                         .event(0, {0x90, 64, 32})   // sample 0
                                         .event(441, {0x9F, 32, 64}) // 441, on the last channel
                                         .event(1, {0x90, 16, 127})  // 442
                                         .event(158, {0x90, 8, 16})  // tick 600: 500 + 2 * 100
                                         .event(0, {0xF0, 2, 1, 0xF7})
                                         .end(10)})));
}

PulseLog& logOf(HostedPlugin& plugin) {
    return *reinterpret_cast<PulseLog*>(plugin.request(effVendorSpecific, kPulseLogRequest));
}

// The first `frames` frames of a song through the pulse instrument; two channels.
std::vector<float> played(HostedPlugin& plugin, const Song& song, std::size_t frames) {
    InstrumentPlayer player(plugin, song, scheduleEvents(song, plugin.format().sampleRate));
    const auto block = static_cast<std::size_t>(plugin.format().blockSize);
    std::vector<float> samples;
    while (samples.size() < 2 * frames) {
        std::vector<float> mix(2 * block, 0.0F);
        player.renderBlock();
        player.addTo(mix, 1.0F);
        samples.insert(samples.end(), mix.begin(), mix.end());
    }
    samples.resize(2 * frames);
    return samples;
}

// By hand: velocity / 128 on the left, note / 128 on the right.
std::vector<float> expectedPulses(std::size_t frames) {
    std::vector<float> samples(2 * frames, 0.0F);
    const auto set = [&](std::size_t frame, float left, float right) {
        samples[2 * frame] = left;
        samples[2 * frame + 1] = right;
    };
    set(0, 0.25F, 0.5F);
    set(441, 0.5F, 0.25F);
    set(442, 127.0F / 128.0F, 0.125F);
    set(700, 0.125F, 0.0625F);
    return samples;
}

class InstrumentPlayerBlocks : public ::testing::TestWithParam<int> {};

TEST_P(InstrumentPlayerBlocks, PutsEveryNoteOnItsOwnSample) {
    const PluginLibrary library(testPlugin("pulse"));
    HostedPlugin plugin(library, {kRate, GetParam()});
    const Song song = pulses();
    EXPECT_EQ(played(plugin, song, 900), expectedPulses(900));
}

TEST_P(InstrumentPlayerBlocks, LosesNoEvent) {
    const PluginLibrary library(testPlugin("pulse"));
    HostedPlugin plugin(library, {kRate, GetParam()});
    const Song song = pulses();
    played(plugin, song, 900);
    ASSERT_EQ(logOf(plugin).events.size(), 5U);
    EXPECT_THAT(logOf(plugin).events[4].bytes, ElementsAre(0xF0, 1, 0xF7));
    for (const PulseEvent& event : logOf(plugin).events) {
        EXPECT_GE(event.offset, 0);
        EXPECT_LT(event.offset, GetParam());
    }
}

TEST_P(InstrumentPlayerBlocks, TellsTheTempoThatHoldsWhereTheBlockStarts) {
    const PluginLibrary library(testPlugin("pulse"));
    HostedPlugin plugin(library, {kRate, GetParam()});
    const Song song = pulses();
    played(plugin, song, 900);
    const auto& times = logOf(plugin).times;
    for (std::size_t i = 0; i < times.size(); ++i) {
        const auto start = static_cast<double>(i) * GetParam();
        EXPECT_DOUBLE_EQ(times[i].samplePos, start);
        EXPECT_DOUBLE_EQ(times[i].tempo, start < 500.0 ? 120.0 : 60.0) << start;
        // One quarter in the first 500 samples, from then on one in 1000.
        EXPECT_NEAR(times[i].ppqPos, start < 500.0 ? start / 500.0 : 0.5 + start / 1000.0, 1e-12);
        EXPECT_EQ((times[i].flags & kVstTransportChanged) != 0, i == 0);
        EXPECT_NE(times[i].flags & kVstTransportPlaying, 0);
    }
}

INSTANTIATE_TEST_SUITE_P(, InstrumentPlayerBlocks,
                         ::testing::Values(1, 2, 7, 64, 441, 442, 500, 512, 4096));

TEST(InstrumentPlayer, RendersOffline) {
    const PluginLibrary library(testPlugin("pulse"));
    HostedPlugin plugin(library, {kRate, 64});
    const Song song = pulses();
    played(plugin, song, 64);
    EXPECT_THAT(logOf(plugin).processLevels, ElementsAre(4));
}

TEST(InstrumentPlayer, AddsItsSoundToTheMix) {
    const PluginLibrary library(testPlugin("pulse"));
    HostedPlugin plugin(library, {kRate, 1});
    const Song song = pulses();
    InstrumentPlayer player(plugin, song, scheduleEvents(song, kRate));
    player.renderBlock();
    std::vector<float> mix{1.0F, 1.0F};
    player.addTo(mix, 2.0F);
    EXPECT_THAT(mix, ElementsAre(1.5F, 2.0F));
}

TEST(InstrumentPlayer, PlaysOnSeveralThreadsAsOnOne) {
    const PluginLibrary library(testPlugin("pulse"));
    const Song song = pulses();
    std::vector<std::vector<float>> results(4);
    std::vector<std::thread> threads;
    threads.reserve(results.size());
    for (auto& result : results) {
        threads.emplace_back([&] {
            HostedPlugin plugin(library, {kRate, 7});
            result = played(plugin, song, 900);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const auto& result : results) {
        EXPECT_EQ(result, expectedPulses(900));
    }
}

TEST(InstrumentPlayer, RefusesAnEffect) {
    const PluginLibrary library(testPlugin("effect"));
    HostedPlugin plugin(library, {kRate, 7});
    const Song song = pulses();
    EXPECT_THROW(InstrumentPlayer(plugin, song, scheduleEvents(song, kRate)), InputError);
}

} // namespace
} // namespace zelvatone
