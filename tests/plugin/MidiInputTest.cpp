// MIDI into the linked library, judged by its sound. What each message queues is in
// ShellEventTest.cpp.
#include "tests/plugin/LoadedPlugin.h"

#include <algorithm>
#include <climits>
#include <vector>

namespace {

constexpr VstInt32 kFrames = 2000; // of an attack of 8820 samples

StereoBlock soundOf(const std::vector<MidiMessage>& messages) {
    const LoadedPlugin plugin;
    plugin.send(messages);
    return plugin.render(kFrames);
}

using MidiInput = LoadedPluginTest;

TEST_F(MidiInput, MakesSound) {
    EXPECT_EQ(plugin.render(kFrames).peak(), 0.0F);
    EXPECT_EQ(plugin.send({kNoteOn}), 1);
    EXPECT_GT(plugin.render(kFrames).peak(), 0.0F);
}

TEST_F(MidiInput, SoundsAlikeOnAllChannels) {
    const StereoBlock onFirst =
        soundOf({{0x90, 60, 100}, {0xE0, 0, 127}, {0x90, 67, 90}, {0x80, 60, 0, 500}});
    ASSERT_GT(onFirst.peak(), 0.0F);
    for (int channel = 1; channel < 16; ++channel) {
        const StereoBlock onThis = soundOf({{0x90 | channel, 60, 100},
                                            {0xE0 | channel, 0, 127},
                                            {0x90 | channel, 67, 90},
                                            {0x80 | channel, 60, 0, 500}});
        EXPECT_TRUE(onThis == onFirst) << channel;
    }
}

TEST_F(MidiInput, ReleasesANoteFromAnyOtherChannel) {
    EXPECT_TRUE(soundOf({{0x93, 60, 100}, {0x8C, 60, 0, 500}}) ==
                soundOf({{0x90, 60, 100}, {0x80, 60, 0, 500}}));
}

TEST_F(MidiInput, TakesVelocityZeroAsANoteOff) {
    EXPECT_TRUE(soundOf({{0x90, 60, 100}, {0x90, 60, 0, 500}}) ==
                soundOf({{0x90, 60, 100}, {0x80, 60, 64, 500}}));
    EXPECT_EQ(soundOf({{0x90, 60, 0}}).peak(), 0.0F);
}

TEST_F(MidiInput, IgnoresTheReleaseVelocity) {
    const StereoBlock soft = soundOf({{0x90, 60, 100}, {0x80, 60, 0, 500}});
    for (const int velocity : {1, 64, 127}) {
        EXPECT_TRUE(soundOf({{0x90, 60, 100}, {0x80, 60, velocity, 500}}) == soft) << velocity;
    }
    EXPECT_FALSE(soundOf({{0x90, 60, 100}}) == soft);
}

TEST_F(MidiInput, IgnoresTheTopBitOfDataBytes) {
    EXPECT_TRUE(soundOf({{0x90, 0x80 | 60, 0x80 | 100}}) == soundOf({{0x90, 60, 100}}));
    EXPECT_EQ(soundOf({{0x90, 60, 0x80}}).peak(), 0.0F); // velocity 0 without that bit
}

TEST_F(MidiInput, SkipsEventsThatAreNotMidi) {
    EventList events;
    for (const VstInt32 type : {0, 2, 3, 4, 5, int{kVstSysExType}, 7, -1, INT_MAX, INT_MIN}) {
        events.addAs(type, kNoteOn);
    }
    EXPECT_EQ(plugin.send(events), 1);
    EXPECT_EQ(plugin.render(kFrames).peak(), 0.0F);
}

TEST_F(MidiInput, GoesOnAfterAnEventThatItSkips) {
    EventList events;
    events.addNull();
    events.addAs(kVstSysExType, kNoteOn);
    events.addNull();
    events.add(kNoteOn);
    EXPECT_EQ(plugin.send(events), 1);
    EXPECT_TRUE(plugin.render(kFrames) == soundOf({kNoteOn}));
}

TEST_F(MidiInput, ReadsNothingFromAnEmptyList) {
    for (const VstInt32 count : {0, -2, INT_MIN}) {
        EventList events({kNoteOn});
        EXPECT_EQ(plugin.ask(effProcessEvents, 0, 0, events.record(count)), 1) << count;
    }
    EXPECT_EQ(plugin.render(kFrames).peak(), 0.0F);
}

TEST_F(MidiInput, ReadsNoFurtherThanTheCount) {
    EventList events({{0x90, 60, 100}, {0x90, 72, 100}});
    EXPECT_EQ(plugin.ask(effProcessEvents, 0, 0, events.record(1)), 1);
    EXPECT_TRUE(plugin.render(kFrames) == soundOf({{0x90, 60, 100}}));
}

TEST_F(MidiInput, TakesALongListLikeItsEventsOneByOne) {
    EventList together;
    const LoadedPlugin other;
    for (int i = 0; i < 100; ++i) {
        const MidiMessage message{i % 2 == 0 ? 0x90 : 0x80, 40 + i / 2, 100, i * 7};
        together.add(message);
        other.send({message});
    }
    EXPECT_EQ(plugin.send(together), 1);
    EXPECT_TRUE(plugin.render(kFrames) == other.render(kFrames));
}

TEST_F(MidiInput, IgnoresMessagesWithoutAMeaning) {
    std::vector<MidiMessage> messages = {kNoteOn};
    for (const int status : {0xA0, 0xC0, 0xD0, 0xF0, 0xF8, 0xFE, 0x00, 0x45}) {
        messages.push_back({status, 1, 100});
    }
    for (int controller = 0; controller < 128; ++controller) {
        if (controller != 123 && controller != 126) {
            messages.push_back({0xB0, controller, 127});
        }
    }
    EXPECT_TRUE(soundOf(messages) == soundOf({kNoteOn}));
}

TEST_F(MidiInput, SelectsNoProgram) {
    plugin.send({{0xC0, 0, 0}, {0xC5, 3, 0}});
    plugin.render(16);
    EXPECT_EQ(plugin.ask(effGetProgram), 0);
}

TEST_F(MidiInput, ReleasesEverythingOnAllNotesOffAndMonoMode) {
    for (const int controller : {123, 126}) {
        const LoadedPlugin loaded;
        loaded.send({{0x90, 20, 127}, {0x90, 60, 127}, {0x90, 100, 127}});
        loaded.render(kFrames);
        loaded.send({{0xB0, controller, 0, 400}});
        loaded.render(14000); // the release of 0.3 s and some more
        EXPECT_EQ(loaded.render(100).peak(), 0.0F) << controller;
    }
}

TEST_F(MidiInput, BeginsOneSampleEarlyAndInTheBlockThatItIsMeantFor) {
    // Due at 50 means from sample 49 on; a sine starts at zero, so 50 is the first that is heard.
    plugin.send({{0x90, 69, 127, 50}});
    const StereoBlock block = plugin.render(100);
    const auto silent = [](float sample) { return sample == 0.0F; };
    EXPECT_TRUE(std::all_of(block.left.begin(), block.left.begin() + 50, silent));
    EXPECT_NE(block.left[50], 0.0F);
}

} // namespace
