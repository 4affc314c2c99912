#include "performance/BendRange.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using zelvatone::BendRange;
using zelvatone::MidiMessage;

// On an instrument that bends by an octave.
class BendRangeTest : public ::testing::Test {
protected:
    std::optional<MidiMessage> take(std::uint8_t status, int data1, int data2) {
        return range_.take({.frame = 5,
                            .status = status,
                            .data1 = static_cast<std::uint8_t>(data1),
                            .data2 = static_cast<std::uint8_t>(data2)});
    }
    void askFor(int channel, int semitones, int cents = 0) {
        const auto status = static_cast<std::uint8_t>(0xB0 | channel);
        take(status, 101, 0);
        take(status, 100, 0);
        take(status, 6, semitones);
        take(status, 38, cents);
    }
    // By how many cents the instrument bends for a message, 1200 over 8192 steps.
    static double centsOf(const std::optional<MidiMessage>& message) {
        if (!message || (message->status & 0xF0) != 0xE0) {
            return NAN;
        }
        return (message->data2 * 128 + message->data1 - 8192) * 1200.0 / 8192.0;
    }
    // For a wheel at `place`, -8192 to 8191.
    double bend(int channel, int place) {
        const int bits = place + 8192;
        return centsOf(take(static_cast<std::uint8_t>(0xE0 | channel), bits % 128, bits / 128));
    }

    BendRange range_{12};
};

constexpr double kHalfStep = 0.5 * 1200.0 / 8192.0; // cents, as near as the instrument's wheel gets

TEST_F(BendRangeTest, WheelBendsByTwoSemitonesWithoutARequest) {
    for (const int place : {-8192, -4096, -1, 0, 1, 17, 4096, 8191}) {
        EXPECT_NEAR(bend(0, place), place * 200.0 / 8192.0, kHalfStep) << place;
    }
    EXPECT_EQ(bend(0, 0), 0.0);
}

TEST_F(BendRangeTest, RequestedRangeHoldsForItsChannel) {
    askFor(2, 7, 50);
    for (const int place : {-8192, -100, 0, 4000, 8191}) {
        EXPECT_NEAR(bend(2, place), place * 750.0 / 8192.0, kHalfStep) << place;
        EXPECT_NEAR(bend(1, place), place * 200.0 / 8192.0, kHalfStep) << place;
    }
}

TEST_F(BendRangeTest, InstrumentsOwnRangeLeavesEveryPlaceAsItIs) {
    askFor(0, 12);
    for (int place = -8192; place < 8192; ++place) {
        ASSERT_DOUBLE_EQ(bend(0, place), place * 1200.0 / 8192.0);
    }
}

TEST_F(BendRangeTest, WiderRangeEndsWhereTheInstrumentEnds) {
    askFor(0, 24);
    EXPECT_NEAR(bend(0, 2048), 600.0, kHalfStep);
    EXPECT_EQ(bend(0, -8192), -1200.0);
    EXPECT_NEAR(bend(0, 8191), 1200.0, 2.0 * kHalfStep);
}

TEST_F(BendRangeTest, NewRangeMovesABendThatIsHeld) {
    bend(0, 4096);
    take(0xB0, 101, 0);
    take(0xB0, 100, 0);
    const auto moved = take(0xB0, 6, 12);
    EXPECT_NEAR(centsOf(moved), 600.0, kHalfStep);
    EXPECT_EQ(moved->frame, 5);
    bend(0, 0);
    EXPECT_FALSE(take(0xB0, 6, 4)) << "a centred wheel stays where it is";
}

TEST_F(BendRangeTest, DataEntryOfOtherParametersPassesAndSetsNoRange) {
    EXPECT_EQ(take(0xB0, 6, 12)->data1, 6) << "none was chosen";
    take(0xB0, 101, 0);
    take(0xB0, 100, 1);
    EXPECT_EQ(take(0xB0, 6, 12)->data1, 6);
    for (const int chosenBefore : {99, 98}) {
        take(0xB0, 101, 0);
        take(0xB0, 100, 0);
        take(0xB0, static_cast<std::uint8_t>(chosenBefore), 0);
        EXPECT_EQ(take(0xB0, 6, 12)->data1, 6) << chosenBefore;
    }
    EXPECT_NEAR(bend(0, 8191), 200.0, 2.0 * kHalfStep);
}

TEST_F(BendRangeTest, ResettingControllersKeepsTheRange) {
    askFor(0, 5);
    bend(0, 4096);
    EXPECT_EQ(take(0xB0, 121, 0)->data1, 121);
    EXPECT_EQ(take(0xB0, 6, 12)->data1, 6) << "data entry has no parameter any more";
    EXPECT_NEAR(bend(0, 4096), 250.0, kHalfStep);
}

TEST_F(BendRangeTest, AllOtherMessagesPass) {
    EXPECT_EQ(take(0x90, 60, 1)->status, 0x90);
    EXPECT_EQ(take(0xB3, 7, 1)->data1, 7);
    EXPECT_EQ(take(0xF8, 0, 0)->status, 0xF8);
}

} // namespace
