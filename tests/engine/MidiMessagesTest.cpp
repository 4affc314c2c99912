// What MIDI messages mean to an engine.
#include "tests/engine/RecordingEngine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace zelvatone {
namespace {

using test::Happening;
using test::RecordingEngine;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MidiMessages : public ::testing::Test {
protected:
    RecordingEngine engine_;

    std::vector<Happening> after(std::int32_t samples) {
        engine_.renderSamples(samples);
        return engine_.log;
    }
    float bendOf(std::int32_t lowBits, std::int32_t highBits) {
        engine_.processMidi(0xE0, lowBits, highBits, 0);
        engine_.renderSamples(1);
        return engine_.bends.back();
    }
};

TEST_F(MidiMessages, NoteOnCarriesTheRawVelocity) {
    engine_.processMidi(0x90, 60, 100, 3);
    EXPECT_THAT(after(5), ElementsAre(Happening{2, "on 60/100"}));
}

TEST_F(MidiMessages, NoteOnReachesBothEndsOfTheKeyboard) {
    engine_.processMidi(0x90, 0, 1, 0);
    engine_.processMidi(0x90, 127, 127, 0);
    EXPECT_THAT(after(2), ElementsAre(Happening{0, "on 0/1"}, Happening{1, "on 127/127"}));
}

TEST_F(MidiMessages, NoteOnWithVelocityZeroIsANoteOff) {
    engine_.stateWords[1] = 5;
    engine_.processMidi(0x90, 60, 0, 3);
    EXPECT_EQ(engine_.stateWords[1], 0);
    EXPECT_THAT(after(5), ElementsAre(Happening{2, "off 60"}));
}

TEST_F(MidiMessages, NoteOffIgnoresItsVelocity) {
    engine_.processMidi(0x80, 60, 0, 1);
    engine_.processMidi(0x80, 61, 127, 1);
    EXPECT_THAT(after(5), ElementsAre(Happening{0, "off 60"}, Happening{1, "off 61"}));
}

TEST_F(MidiMessages, NoteOffClearsTheMiddleStateWordAtOnceAndNothingElseDoes) {
    engine_.stateWords[0] = engine_.stateWords[1] = engine_.stateWords[2] = 9;
    engine_.processMidi(0x90, 60, 100, 0);
    engine_.processMidi(0xB0, 123, 0, 0);
    engine_.processMidi(0xE0, 0, 64, 0);
    EXPECT_THAT(engine_.stateWords, Each(9));
    engine_.processMidi(0x80, 60, 0, 1000);
    EXPECT_THAT(engine_.stateWords, ElementsAre(9, 0, 9));
}

TEST_F(MidiMessages, AllNotesOffAndMonoModeReleaseEveryNoteFromZeroUp) {
    for (const std::int32_t controller : {123, 126}) {
        RecordingEngine fresh;
        // Late in its block, and still every note-off is due at once.
        fresh.processMidi(0xB0, controller, 0, 4000);
        EXPECT_EQ(fresh.waitingCounters(), std::vector<std::int32_t>(128, 0));
        fresh.renderSamples(8);
        ASSERT_EQ(fresh.log.size(), 128U);
        for (std::int32_t note = 0; note < 128; ++note) {
            EXPECT_EQ(fresh.log[static_cast<std::size_t>(note)].what,
                      "off " + std::to_string(note));
        }
    }
}

TEST_F(MidiMessages, AllNotesOffHasRoomTwiceInABlock) {
    engine_.processMidi(0xB0, 123, 0, 0);
    engine_.processMidi(0xB0, 126, 0, 0);
    EXPECT_EQ(after(9).size(), 256U);
}

TEST_F(MidiMessages, NoOtherControllerDoesAnything) {
    for (std::int32_t controller = 0; controller < 128; ++controller) {
        if (controller != 123 && controller != 126) {
            engine_.processMidi(0xB0, controller, 127, 0); // 64 sustain and 120 sound off included
            EXPECT_EQ(engine_.events.available(), 0) << "controller " << controller;
        }
    }
}

TEST_F(MidiMessages, AftertouchProgramChangePressureAndSystemMessagesAreDropped) {
    for (const std::int32_t status : {0x00, 0x10, 0x70, 0xA0, 0xC0, 0xD0, 0xF0}) {
        engine_.processMidi(status, 60, 100, 0);
    }
    EXPECT_THAT(after(1), IsEmpty());
    EXPECT_EQ(engine_.events.available(), 0);
}

TEST_F(MidiMessages, PitchBendIsAnOctaveOfFourteenBits) {
    EXPECT_EQ(bendOf(0x00, 0x40), 0.0F);
    EXPECT_EQ(bendOf(0x00, 0x00), -1.0F);
    EXPECT_EQ(bendOf(0x7F, 0x7F), 0.9998779296875F);
    EXPECT_EQ(bendOf(0x01, 0x40), 0.0001220703125F);
    EXPECT_EQ(bendOf(0x7F, 0x3F), -0.0001220703125F);
    EXPECT_EQ(bendOf(0x00, 0x60), 0.5F);
}

TEST_F(MidiMessages, PitchBendWaitsForItsSample) {
    engine_.processMidi(0xE0, 0, 0x40, 6);
    EXPECT_THAT(after(9), ElementsAre(Happening{5, "bend"}));
}

TEST_F(MidiMessages, QueueWithTheirOffsetsInTheOrderOfTheirArrival) {
    engine_.processMidi(0x90, 60, 100, 7);
    engine_.processMidi(0xE0, 0, 0x40, -3);
    engine_.processMidi(0x80, 60, 0, 5000);
    EXPECT_THAT(engine_.waitingCounters(), ElementsAre(7, -3, 5000));
}

TEST_F(MidiMessages, StopAtTheFullRingInTheMiddleOfAllNotesOff) {
    for (std::int32_t i = 0; i < 128; ++i) {
        engine_.processMidi(0x80, i, 0, 100);
    }
    engine_.processMidi(0xB0, 123, 0, 0);
    EXPECT_EQ(engine_.events.free(), 0);
}

} // namespace
} // namespace zelvatone
