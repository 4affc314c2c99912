// Which slot a note takes, and when a slot is free again.
#include "tests/engine/EngineFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

namespace zelvatone {
namespace {

using test::EngineTest;
using test::slotsAt;

constexpr std::int32_t kFree = -1;
constexpr std::int32_t kReleased = -2;

class VoiceSlots : public EngineTest {
protected:
    // A release of 8 samples at this rate.
    void SetUp() override {
        engine_.setSampleRate(16.0F);
        set(kRelease, 0.5F);
    }
    void fillAllSlots() {
        for (std::int32_t i = 0; i < 32; ++i) {
            engine_.noteOn(40 + i, 127);
        }
    }
    std::int32_t state(std::size_t slot) const { return engine_.voiceNotes.at(slot); }
};

TEST_F(VoiceSlots, AreTakenFromTheHighestIndexDown) {
    engine_.noteOn(60, 100);
    engine_.noteOn(64, 100);
    engine_.noteOn(67, 100);
    EXPECT_EQ(state(31), 60);
    EXPECT_EQ(state(30), 64);
    EXPECT_EQ(state(29), 67);
    EXPECT_EQ(slotsAt(engine_, kFree), 29);
}

TEST_F(VoiceSlots, NumberThirtyTwoAndTheThirtyThirdNoteIsDropped) {
    fillAllSlots();
    const std::vector<std::int32_t> before = engine_.voiceNotes;
    EXPECT_EQ(state(0), 71);
    render(3);
    engine_.noteOn(100, 127);
    EXPECT_EQ(engine_.voiceNotes, before);
    for (const auto& envelope : engine_.envelopes) {
        EXPECT_EQ(envelope->time, 3.0 / 16.0);
    }
}

TEST_F(VoiceSlots, StayTakenWhileTheirNoteFades) {
    fillAllSlots();
    engine_.noteOff(50);
    EXPECT_EQ(slotsAt(engine_, kReleased), 1);
    engine_.noteOn(100, 127);
    EXPECT_EQ(slotsAt(engine_, 100), 0);
    render(8); // the eighth sample ends the fade
    engine_.noteOn(100, 127);
    EXPECT_EQ(slotsAt(engine_, 100), 0);
    render(1); // and the next one finds the slot idle
    engine_.noteOn(100, 127);
    EXPECT_EQ(state(21), 100);
}

TEST_F(VoiceSlots, AreTakenFromTheHighestAgainOnceTheyAreFree) {
    fillAllSlots();
    engine_.noteOff(41); // slot 30
    engine_.noteOff(61); // slot 10
    render(9);
    engine_.noteOn(100, 127);
    EXPECT_EQ(state(30), 100);
    EXPECT_EQ(state(10), kFree);
}

TEST_F(VoiceSlots, BecomeFreeOneSampleAfterTheFadesLast) {
    engine_.noteOn(60, 127);
    engine_.noteOff(60);
    render(7);
    EXPECT_TRUE(envelope().isActive());
    render(1);
    EXPECT_FALSE(envelope().isActive());
    EXPECT_EQ(state(31), kReleased);
    render(1);
    EXPECT_EQ(state(31), kFree);
}

TEST_F(VoiceSlots, NeverFreeThemselvesWhileTheKeyIsDown) {
    test::useEnvelope(engine_, 0.01F, 0.01F, 0.0F, 0.01F);
    engine_.noteOn(60, 127);
    render(2000);
    EXPECT_EQ(state(31), 60);
    EXPECT_TRUE(envelope().isActive());
}

TEST_F(VoiceSlots, AreAllReleasedTogetherByTheirNote) {
    for (const std::int32_t note : {60, 64, 60, 60}) {
        engine_.noteOn(note, 100);
    }
    EXPECT_EQ(slotsAt(engine_, 60), 3);
    engine_.noteOff(60);
    EXPECT_EQ(slotsAt(engine_, kReleased), 3);
    EXPECT_EQ(state(30), 64);
    EXPECT_EQ(envelope().state, ADSR::kReleased);
    EXPECT_EQ(envelope(1).state, ADSR::kHeld);
    EXPECT_EQ(envelope(2).state, ADSR::kReleased);
    EXPECT_EQ(envelope(3).state, ADSR::kReleased);
}

TEST_F(VoiceSlots, AreLeftAloneByNoteOffsOfNotesThatAreNotHeld) {
    engine_.noteOn(60, 100);
    const std::vector<std::int32_t> before = engine_.voiceNotes;
    engine_.noteOff(61);
    EXPECT_EQ(engine_.voiceNotes, before);
}

TEST_F(VoiceSlots, FadeOnAtASecondNoteOff) {
    engine_.noteOn(60, 127);
    engine_.noteOff(60);
    render(4);
    engine_.noteOff(60);
    EXPECT_EQ(envelope().time, 0.25);
}

TEST_F(VoiceSlots, StartTheirVoiceAndEnvelope) {
    engine_.noteOn(69, 64);
    EXPECT_EQ(voice().baseFreq, 440.0F);
    EXPECT_EQ(voice().activeCount, 10);
    EXPECT_EQ(envelope().state, ADSR::kHeld);
    // 64 / 127, rounded to single precision on the way.
    EXPECT_EQ(envelope().velocity, static_cast<double>(0.50393701F));
    EXPECT_NEAR(envelope().velocity, 0.503937, 5e-7);
    engine_.noteOn(69, 127);
    EXPECT_EQ(envelope(1).velocity, 1.0);
}

TEST_F(VoiceSlots, HoldTheWholeNumberButSoundItsLastSevenBits) {
    engine_.noteOn(69 + 128, 100);
    EXPECT_EQ(state(31), 197);
    EXPECT_EQ(voice().baseFreq, 440.0F);
    engine_.noteOff(69);
    EXPECT_EQ(state(31), 197);
    engine_.noteOff(197);
    EXPECT_EQ(state(31), kReleased);
}

TEST_F(VoiceSlots, EmptyHalfByHalfAtAllNotesOff) {
    // 64 events in the first sample, then 32, 16, ...: notes 0 to 63, 64 to 95, 96 to 111, ...
    for (const std::int32_t note : {0, 63, 64, 95, 96, 111, 112, 126, 127}) {
        engine_.noteOn(note, 100);
    }
    engine_.processMidi(0xB0, 123, 0, 7);
    std::vector<std::int32_t> released;
    for (int sample = 0; sample < 8; ++sample) {
        render(1);
        released.push_back(slotsAt(engine_, kReleased));
    }
    EXPECT_THAT(released, ::testing::ElementsAre(2, 4, 6, 7, 7, 7, 8, 9));
}

} // namespace
} // namespace zelvatone
