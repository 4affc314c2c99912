#include "live/keys/KeyboardPiano.h"

#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using Phase = KeyEvent::Phase;
using std::chrono::milliseconds;

class KeyboardPianoKeys : public ::testing::Test {
protected:
    // "on 48" and "off 48", with commas between.
    static std::string text(const std::vector<MidiMessage>& messages) {
        std::string all;
        for (const MidiMessage& message : messages) {
            all += (all.empty() ? "" : ", ") +
                   std::string(message.kind() == kNoteOnStatus ? "on " : "off ") +
                   std::to_string(message.data1);
        }
        return all;
    }
    std::string strike(char32_t letter, int atMilliseconds) {
        return text(piano.take({KeyEvent::Kind::kCharacter, Phase::kCharacter, letter, 0},
                               KeyboardPiano::Time(milliseconds(atMilliseconds))));
    }
    std::string move(char32_t place, Phase phase) {
        return text(piano.take({KeyEvent::Kind::kCharacter, phase, place, place}, {}));
    }
    std::string elapse(int atMilliseconds) {
        return text(piano.elapse(KeyboardPiano::Time(milliseconds(atMilliseconds))));
    }

    KeyboardPiano piano{KeyLayout::kQwerty};
};

// Middle C is 60 and the C of octave 4; the lowest key is an octave below.
TEST_F(KeyboardPianoKeys, PlayTwoOctavesFromC) {
    EXPECT_EQ(move(U'z', Phase::kPress), "on 48");
    EXPECT_EQ(move(U's', Phase::kPress), "on 49");
    EXPECT_EQ(move(U'm', Phase::kPress), "on 59");
    EXPECT_EQ(move(U'q', Phase::kPress), "on 60");
    EXPECT_EQ(move(U'u', Phase::kPress), "on 71");
    EXPECT_EQ(move(U'i', Phase::kPress), "on 72");
    EXPECT_EQ(move(U'a', Phase::kPress), ""); // no black key between B and C
}

TEST_F(KeyboardPianoKeys, SoundUntilTheirReleaseWhereItIsTold) {
    EXPECT_EQ(move(U'z', Phase::kPress), "on 48");
    EXPECT_EQ(move(U'z', Phase::kRepeat), "");
    EXPECT_EQ(elapse(100000), "");
    piano.moveOctave(1); // meanwhile
    EXPECT_EQ(move(U'z', Phase::kRelease), "off 48");
    EXPECT_EQ(move(U'z', Phase::kRelease), "");
}

// Repeats of the usual keyboard: the first after half a second, then 30 a second.
TEST_F(KeyboardPianoKeys, HeldOnesSoundOnThroughTheirRepeats) {
    EXPECT_EQ(strike(U'z', 0), "on 48");
    EXPECT_EQ(strike(U'z', 500), "");
    EXPECT_EQ(strike(U'z', 533), "");
    EXPECT_EQ(elapse(1232), "");
    EXPECT_EQ(elapse(1233), "off 48");
}

TEST_F(KeyboardPianoKeys, StruckTwiceSoundTwice) {
    EXPECT_EQ(strike(U'z', 0), "on 48");
    EXPECT_EQ(strike(U'z', 120), "off 48, on 48");
    EXPECT_EQ(strike(U'x', 300), "on 50");
    EXPECT_EQ(strike(U'z', 600), "off 48, on 48"); // no repeat: another key came between
}

TEST_F(KeyboardPianoKeys, MoveByOctavesWithinWhatMidiHas) {
    piano.moveOctave(100);
    EXPECT_EQ(piano.octave(), 7);
    EXPECT_EQ(strike(U'z', 0), "on 96");
    EXPECT_EQ(strike(U']', 0), "on 127");
    piano.moveOctave(-100);
    EXPECT_EQ(strike(U'z', 2000), "off 96, on 0");
    EXPECT_EQ(text(piano.releaseAll()), "off 127, off 0");
}

TEST(KeyboardPianoLayout, FindsPlacesByTheLettersOnThem) {
    const auto first = [](KeyLayout layout, char32_t letter) {
        KeyboardPiano piano(layout);
        const auto messages =
            piano.take({KeyEvent::Kind::kCharacter, Phase::kCharacter, letter, 0}, {});
        return messages.empty() ? -1 : static_cast<int>(messages[0].data1);
    };
    EXPECT_EQ(first(KeyLayout::kQwertz, U'y'), 48);
    EXPECT_EQ(first(KeyLayout::kQwertz, U'z'), 69);
    EXPECT_EQ(first(KeyLayout::kAzerty, U'w'), 48);
    EXPECT_EQ(first(KeyLayout::kAzerty, U'a'), 60);
    EXPECT_EQ(first(KeyLayout::kAzerty, U'\u00E9'), 61);
    EXPECT_EQ(first(KeyLayout::kQwerty, U'Z'), 48); // with shift or caps lock
}

TEST(KeyboardPianoLayout, FollowsTheLocale) {
    EXPECT_EQ(usualKeyLayout("de_AT.UTF-8"), KeyLayout::kQwertz);
    EXPECT_EQ(usualKeyLayout("fr_FR.UTF-8"), KeyLayout::kAzerty);
    EXPECT_EQ(usualKeyLayout("fr_CH"), KeyLayout::kQwertz);
    EXPECT_EQ(usualKeyLayout("fr_CA"), KeyLayout::kQwerty);
    EXPECT_EQ(usualKeyLayout("C"), KeyLayout::kQwerty);
}

TEST(KeyboardPianoPedal, IsASwitchWhereNoReleaseIsTold) {
    KeyboardPiano piano(KeyLayout::kQwerty);
    EXPECT_EQ(piano.pressPedal(Phase::kCharacter).at(0).data2, 127);
    EXPECT_EQ(piano.pressPedal(Phase::kCharacter).at(0).data2, 0);
    EXPECT_EQ(piano.pressPedal(Phase::kPress).at(0).data2, 127);
    EXPECT_TRUE(piano.pressPedal(Phase::kRepeat).empty());
    EXPECT_EQ(piano.pressPedal(Phase::kRelease).at(0).data2, 0);
}

} // namespace
} // namespace zelvatone
