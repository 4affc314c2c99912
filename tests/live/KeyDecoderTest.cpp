#include "live/keys/KeyDecoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using Kind = KeyEvent::Kind;
using Phase = KeyEvent::Phase;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

KeyEvent character(char32_t letter) {
    return {Kind::kCharacter, Phase::kCharacter, letter, 0};
}
KeyEvent key(Kind kind, Phase phase = Phase::kCharacter) {
    return {kind, phase, 0, 0};
}

TEST(KeyDecoder, TakesCharactersOfOneAndMoreBytes) {
    KeyDecoder decoder;
    EXPECT_THAT(decoder.take("z\xC3\xA9"), ElementsAre(character(U'z'), character(U'\u00E9')));
    EXPECT_THAT(decoder.take("\xC3"), IsEmpty());
    EXPECT_THAT(decoder.take("\xB6"), ElementsAre(character(U'\u00F6')));
}

TEST(KeyDecoder, KnowsTheKeysThatHaveNoCharacter) {
    KeyDecoder decoder;
    EXPECT_THAT(decoder.take("\x1b[A\x1b[B\x1bOC\x1b[D\x1b[5~\x1b[6~\x7f\t"),
                ElementsAre(key(Kind::kUp), key(Kind::kDown), key(Kind::kRight), key(Kind::kLeft),
                            key(Kind::kPageUp), key(Kind::kPageDown), key(Kind::kBackspace),
                            key(Kind::kTab)));
}

TEST(KeyDecoder, WaitsForTheRestOfASequence) {
    KeyDecoder decoder;
    EXPECT_THAT(decoder.take("\x1b"), IsEmpty());
    EXPECT_THAT(decoder.take("["), IsEmpty());
    EXPECT_THAT(decoder.take("A"), ElementsAre(key(Kind::kUp)));
}

TEST(KeyDecoder, TakesAnEscapeForAKeyWhenNothingFollows) {
    KeyDecoder decoder;
    EXPECT_THAT(decoder.take("\x1b"), IsEmpty());
    EXPECT_THAT(decoder.pause(), ElementsAre(key(Kind::kEscape)));
    EXPECT_THAT(decoder.pause(), IsEmpty());
}

// On a German keyboard, the key of a US Y: code 122 (z), base layout 121 (y).
TEST(KeyDecoder, TellsPlacePressRepeatAndReleaseWhereTheTerminalDoes) {
    KeyDecoder decoder;
    const auto z = [](Phase phase) { return KeyEvent{Kind::kCharacter, phase, U'z', U'y'}; };
    EXPECT_THAT(decoder.take("\x1b[122::121u\x1b[122::121;1:2u\x1b[122::121;1:3u"),
                ElementsAre(z(Phase::kPress), z(Phase::kRepeat), z(Phase::kRelease)));
    EXPECT_THAT(decoder.take("\x1b[1;1:3A"), ElementsAre(key(Kind::kUp, Phase::kRelease)));
    EXPECT_THAT(decoder.take("\x1b[99;5u"), ElementsAre(key(Kind::kInterrupt, Phase::kPress)));
}

// Alt sends an escape before the character, in one go or in two.
TEST(KeyDecoder, TakesNoKeyWithAltForAnEscape) {
    KeyDecoder decoder;
    EXPECT_THAT(decoder.take("\x1bz\x1b\xC3\xA9z"), ElementsAre(character(U'z')));
    EXPECT_THAT(decoder.take("\x1b\xC3"), IsEmpty());
    EXPECT_THAT(decoder.take("\xA9z"), ElementsAre(character(U'z')));
    EXPECT_THAT(decoder.take("\x1b\x1b"), ElementsAre(key(Kind::kEscape)));
    EXPECT_THAT(decoder.pause(), ElementsAre(key(Kind::kEscape)));
}

// On a Russian keyboard the key of a US C has code 1089.
TEST(KeyDecoder, KnowsTheInterruptOfAnotherAlphabet) {
    KeyDecoder decoder;
    EXPECT_THAT(decoder.take("\x1b[1089::99;5u"),
                ElementsAre(key(Kind::kInterrupt, Phase::kPress)));
    EXPECT_THAT(decoder.take("\x1b[1089::100;5u"), IsEmpty());
}

TEST(KeyDecoder, LeavesOutWhatIsNotAKey) {
    KeyDecoder decoder;
    EXPECT_THAT(decoder.take("\x1b[?15u\x1b[57441;2u\x1b[200~\x01"), IsEmpty());
    EXPECT_THAT(decoder.take("\x1b[" + std::string(100, '9')), IsEmpty());
    EXPECT_THAT(decoder.take("q"), ElementsAre(character(U'q')));
}

} // namespace
} // namespace zelvatone
