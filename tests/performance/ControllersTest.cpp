#include "performance/Controllers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

using zelvatone::ControllerOutput;
using zelvatone::Controllers;
using zelvatone::midiMessage;
using zelvatone::MidiMessage;

// Writes down what comes out, one text each: "90 3c 64 @7".
class Log final : public ControllerOutput {
public:
    void play(const MidiMessage& message) override {
        char text[32];
        std::snprintf(text, sizeof text, "%02x %02x %02x @%d", unsigned{message.status},
                      unsigned{message.data1}, unsigned{message.data2}, int{message.frame});
        lines.emplace_back(text);
    }
    void setGain(float gain, std::int32_t frame) override {
        gains.push_back(gain);
        lines.push_back("gain @" + std::to_string(frame));
    }
    void stopSound(std::int32_t frame) override {
        lines.push_back("stop @" + std::to_string(frame));
    }
    void chooseProgram(std::int32_t program, std::int32_t frame) override {
        lines.push_back("program " + std::to_string(program) + " @" + std::to_string(frame));
    }

    std::vector<std::string> lines;
    std::vector<float> gains;
};

class ControllersTest : public ::testing::Test {
protected:
    using Lines = std::vector<std::string>;

    // What comes out of one message.
    Lines take(std::uint8_t status, std::uint8_t data1, std::uint8_t data2,
               std::int32_t frame = 0) {
        log_.lines.clear();
        controllers_.take({.frame = frame, .status = status, .data1 = data1, .data2 = data2}, log_);
        return log_.lines;
    }

    Controllers controllers_;
    Log log_;
};

TEST_F(ControllersTest, MessagesWithoutAMeaningHerePassAsTheyAre) {
    EXPECT_EQ(take(0x93, 60, 100, 7), Lines{"93 3c 64 @7"});
    EXPECT_EQ(take(0x93, 60, 0, 8), Lines{"93 3c 00 @8"});
    EXPECT_EQ(take(0x83, 60, 64, 9), Lines{"83 3c 40 @9"});
    EXPECT_EQ(take(0xE0, 1, 2, 10), Lines{"e0 01 02 @10"});
    EXPECT_EQ(take(0xB0, 1, 99, 11), Lines{"b0 01 63 @11"});
    EXPECT_EQ(take(0xD0, 5, 0, 12), Lines{"d0 05 00 @12"});
}

TEST_F(ControllersTest, NoteOffsWaitUntilThePedalGoesUp) {
    take(0x90, 60, 100);
    take(0x90, 64, 100);
    EXPECT_EQ(take(0xB0, 64, 64), Lines{});
    EXPECT_EQ(take(0x80, 64, 30), Lines{});
    EXPECT_EQ(take(0x90, 60, 0), Lines{});
    EXPECT_EQ(take(0xB0, 64, 63, 5), (Lines{"80 3c 00 @5", "80 40 00 @5"}));
    EXPECT_EQ(take(0xB0, 64, 0, 6), Lines{});
}

TEST_F(ControllersTest, APedalHoldsItsOwnChannel) {
    take(0xB1, 64, 127);
    EXPECT_EQ(take(0x80, 60, 0), Lines{"80 3c 00 @0"});
    EXPECT_EQ(take(0x81, 60, 0), Lines{});
    EXPECT_EQ(take(0xB0, 64, 0), Lines{});
    EXPECT_EQ(take(0xB1, 64, 0), Lines{"81 3c 00 @0"});
}

TEST_F(ControllersTest, AKeyStruckAgainUnderThePedalEndsItsOldNote) {
    take(0xB0, 64, 127);
    take(0x90, 60, 100);
    take(0x80, 60, 0);
    EXPECT_EQ(take(0x90, 60, 90, 4), (Lines{"80 3c 00 @4", "90 3c 5a @4"}));
    EXPECT_EQ(take(0xB0, 64, 0), Lines{}) << "the key is still down";
    EXPECT_EQ(take(0x80, 60, 0), Lines{"80 3c 00 @0"});
}

TEST_F(ControllersTest, VolumeAndExpressionFollowTheCurveOfGeneralMidi) {
    EXPECT_EQ(controllers_.gain(), 1.0F);
    EXPECT_EQ(take(0xB0, 7, 64, 3), Lines{"gain @3"});
    // 40 dB a decade: 40 log10(64 / 127) = -11.905 dB.
    EXPECT_NEAR(20.0 * std::log10(static_cast<double>(log_.gains.back())), -11.905, 0.001);
    take(0xB5, 11, 64);
    EXPECT_NEAR(20.0 * std::log10(static_cast<double>(log_.gains.back())), -23.810, 0.001);
    take(0xB0, 7, 127);
    take(0xB0, 11, 127);
    EXPECT_EQ(log_.gains.back(), 1.0F);
    take(0xB0, 11, 0);
    EXPECT_EQ(log_.gains.back(), 0.0F);
}

TEST_F(ControllersTest, VolumeThatIsRepeatedChangesNothing) {
    EXPECT_EQ(take(0xB0, 7, 127), Lines{});
    EXPECT_EQ(take(0xB0, 7, 100, 1), Lines{"gain @1"});
    EXPECT_EQ(take(0xB0, 7, 100, 2), Lines{});
}

TEST_F(ControllersTest, AllSoundOffStopsAndForgetsWhatThePedalHeld) {
    take(0xB0, 64, 127);
    take(0x90, 60, 100);
    take(0x80, 60, 0);
    EXPECT_EQ(take(0xB0, 120, 0, 9), Lines{"stop @9"});
    EXPECT_EQ(take(0xB0, 64, 0), Lines{});
}

TEST_F(ControllersTest, ResettingControllersLiftsThePedalAndCentresExpressionAndBend) {
    take(0xB2, 7, 100);
    const float volume = controllers_.gain();
    take(0xB2, 11, 50);
    take(0xB2, 64, 127);
    take(0x82, 60, 0);
    EXPECT_EQ(take(0xB2, 121, 0, 2), (Lines{"82 3c 00 @2", "gain @2", "e2 00 40 @2"}));
    EXPECT_EQ(controllers_.gain(), volume);
}

TEST_F(ControllersTest, AllNotesOffWaitsForThePedal) {
    take(0x90, 60, 100);
    take(0x90, 62, 100);
    take(0xB0, 64, 127);
    EXPECT_EQ(take(0xB0, 123, 0), Lines{});
    EXPECT_EQ(take(0xB0, 64, 0), (Lines{"80 3c 00 @0", "80 3e 00 @0"}));
}

TEST_F(ControllersTest, AllNotesOffEndsTheKeysOfItsChannel) {
    take(0x92, 60, 100);
    take(0x92, 64, 100);
    take(0x92, 67, 100);
    take(0x82, 64, 0);
    take(0x93, 60, 100);
    EXPECT_EQ(take(0xB2, 123, 0, 13), (Lines{"82 3c 00 @13", "82 43 00 @13"}));
    EXPECT_EQ(take(0xB2, 123, 0, 14), Lines{});
    EXPECT_EQ(take(0xB3, 126, 0, 15), Lines{"83 3c 00 @15"});
}

TEST_F(ControllersTest, ProgramChangesAreReported) {
    EXPECT_EQ(take(0xC4, 41, 0, 8), Lines{"program 41 @8"});
}

TEST_F(ControllersTest, ResetForgetsPedalsAndVolumes) {
    take(0xB0, 64, 127);
    take(0xB0, 7, 1);
    controllers_.reset();
    EXPECT_EQ(controllers_.gain(), 1.0F);
    EXPECT_EQ(take(0x80, 60, 0), Lines{"80 3c 00 @0"});
}

TEST(MidiMessageOfBytes, DataBytesHaveSevenBits) {
    const MidiMessage message = midiMessage(3, 0x95, 0xBC, 0xFF);
    EXPECT_EQ(message.frame, 3);
    EXPECT_EQ(message.status, 0x95);
    EXPECT_EQ(message.data1, 0x3C);
    EXPECT_EQ(message.data2, 0x7F);
}

} // namespace
