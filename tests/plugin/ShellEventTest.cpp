// What the plug-in object and the engine's MIDI entry make of each message.
#include "tests/plugin/ShellTest.h"

#include <gmock/gmock.h>

#include <climits>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ShellEvent : public ShellTest {
protected:
    std::vector<std::string> eventsOf(const std::vector<MidiMessage>& messages) {
        EXPECT_EQ(effect.send(messages), 1);
        return engine.takeEvents();
    }
    float bendOf(int lowBits, int highBits) {
        EXPECT_THAT(eventsOf({{0xE0, lowBits, highBits, 3}}), ElementsAre("bend at 3"));
        return engine.bend;
    }
};

TEST_F(ShellEvent, KeepsOrderVelocityAndOffset) {
    EXPECT_THAT(eventsOf({{0x90, 60, 100, 5}, {0x80, 60, 64, 3}, {0x90, 0, 127, 5}}),
                ElementsAre("on 60 100 at 5", "off 60 at 3", "on 0 127 at 5"));
}

TEST_F(ShellEvent, DropsTheChannel) {
    for (int channel = 0; channel < 16; ++channel) {
        EXPECT_THAT(
            eventsOf({{0x90 | channel, 60, 100}, {0x80 | channel, 60, 0}, {0xE0 | channel, 0, 64}}),
            ElementsAre("on 60 100 at 0", "off 60 at 0", "bend at 0"))
            << channel;
    }
}

TEST_F(ShellEvent, PassesAnyOffsetUnchanged) {
    EXPECT_THAT(eventsOf({{0x90, 1, 1, -1}, {0x90, 1, 1, INT_MAX}, {0x90, 1, 1, INT_MIN}}),
                ElementsAre("on 1 1 at -1", "on 1 1 at 2147483647", "on 1 1 at -2147483648"));
}

TEST_F(ShellEvent, CutsDataBytesToSevenBits) {
    EXPECT_THAT(eventsOf({{0x90, 0xBC, 0xE4}, {0x80, 0xFF, 0xFF}, {0x90, 60, 0x80}}),
                ElementsAre("on 60 100 at 0", "off 127 at 0", "off 60 at 0"));
}

TEST_F(ShellEvent, MakesANoteOffOfVelocityZero) {
    EXPECT_THAT(eventsOf({{0x90, 60, 0, 9}}), ElementsAre("off 60 at 9"));
}

TEST_F(ShellEvent, ClearsTheEnginesStateWordOnNoteOffsAlone) {
    const auto wordAfter = [this](const MidiMessage& message) {
        engine.stateWords[0] = engine.stateWords[1] = engine.stateWords[2] = 5;
        eventsOf({message});
        EXPECT_EQ(engine.stateWords[0], 5);
        EXPECT_EQ(engine.stateWords[2], 5);
        return engine.stateWords[1];
    };
    EXPECT_EQ(wordAfter({0x80, 60, 64}), 0);
    EXPECT_EQ(wordAfter({0x90, 60, 0}), 0);
    EXPECT_EQ(wordAfter({0x90, 60, 1}), 5);
    EXPECT_EQ(wordAfter({0xB0, 123, 0}), 5);
    EXPECT_EQ(wordAfter({0xE0, 0, 64}), 5);
}

TEST_F(ShellEvent, ReleasesAllNotesAtTheStartOfTheBlock) {
    for (const int controller : {123, 126}) {
        const auto events = eventsOf({{0xB0, controller, 0, 400}});
        ASSERT_EQ(events.size(), 128U) << controller;
        for (int note = 0; note < 128; ++note) {
            EXPECT_EQ(events[note], "off " + std::to_string(note) + " at 0") << controller;
        }
    }
}

TEST_F(ShellEvent, MakesNothingOfOtherControllers) {
    for (int controller = 0; controller < 128; ++controller) {
        if (controller != 123 && controller != 126) {
            EXPECT_THAT(eventsOf({{0xB0, controller, 127}}), IsEmpty()) << controller;
        }
    }
}

TEST_F(ShellEvent, BendsAnOctaveEitherWayAroundTheCentre) {
    EXPECT_EQ(bendOf(0x00, 0x00), -1.0F);
    EXPECT_EQ(bendOf(0x00, 0x40), 0.0F);
    EXPECT_EQ(bendOf(0x7F, 0x7F), 0.9998779296875F); // 8191 / 8192
    EXPECT_EQ(bendOf(0x01, 0x40), 0.0001220703125F); // 1 / 8192: the low bits come first
    EXPECT_EQ(bendOf(0x00, 0x60), 0.5F);
}

TEST_F(ShellEvent, MakesNothingOfOtherMessages) {
    for (const int status : {0xA0, 0xC0, 0xD0, 0xF0, 0xF7, 0xFF, 0x70, 0x00}) {
        EXPECT_THAT(eventsOf({{status, 60, 100}}), IsEmpty()) << status;
    }
}

TEST_F(ShellEvent, SkipsNullPointersAndWhatIsNotAMidiEvent) {
    EventList events;
    for (const VstInt32 type : {0, 2, 5, int{kVstSysExType}, 7, -1}) {
        events.addAs(type, {0x90, 60, 100});
        events.addNull();
    }
    events.add({0x90, 61, 100});
    EXPECT_EQ(effect.send(events), 1);
    EXPECT_THAT(engine.takeEvents(), ElementsAre("on 61 100 at 0"));
}

TEST_F(ShellEvent, ReturnsOneWithoutAnyEvents) {
    EXPECT_EQ(effect.ask(effProcessEvents), 1);
    EventList events({{0x90, 60, 100}});
    EXPECT_EQ(effect.ask(effProcessEvents, 0, 0, events.record(0)), 1);
    EXPECT_EQ(effect.ask(effProcessEvents, 0, 0, events.record(-5)), 1);
    EXPECT_THAT(engine.takeEvents(), IsEmpty());
}

TEST_F(ShellEvent, RendersNothingByItself) {
    effect.send({{0x90, 60, 100}});
    EXPECT_TRUE(engine.renders.empty());
    EXPECT_TRUE(host.calls.empty());
    engine.takeEvents();
}

} // namespace
