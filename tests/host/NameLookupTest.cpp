#include "host/text/NameLookup.h"

#include "host/Error.h"
#include "host/text/Names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const std::vector<std::string> kNames{"Default", "Sleep Walker", "Sleep Walker Remix", "Sleepy",
                                      "8 Bits",  "Lime Bass",    "Lemon Bass"};

std::string answerFor(const std::string& wanted, const std::vector<std::string>& names = kNames,
                      std::size_t cutLength = 0) {
    try {
        const NameLookup lookup({"sound", "list", cutLength}, names);
        return std::to_string(lookup.find(wanted));
    } catch (const InputError& error) {
        return error.what();
    }
}

TEST(NameLookup, FindsANameThatOthersBeginWith) {
    EXPECT_EQ(answerFor("Sleep Walker"), "1");
}

TEST(NameLookup, FindsANameInAnyCase) {
    EXPECT_EQ(answerFor("sleep WALKER remix"), "2");
}

TEST(NameLookup, FindsAUniqueBeginningInAnyCase) {
    EXPECT_EQ(answerFor("sleepy"), "3");
    EXPECT_EQ(answerFor("LI"), "5");
    EXPECT_EQ(answerFor("d"), "0");
    EXPECT_THAT(answerFor("Sleepy2"), HasSubstr("unknown"));
}

TEST(NameLookup, PrefersExactCaseToAnyCase) {
    EXPECT_EQ(answerFor("bass", {"Bass", "bass", "BASS"}), "1");
    EXPECT_EQ(answerFor("bASS", {"Bass", "bass"}),
              "sound 'bASS' could be 'Bass' (0) or 'bass' (1)");
}

TEST(NameLookup, TellsNamesThatAreTheSameByTheirNumbers) {
    EXPECT_EQ(answerFor("Level", {"Level", "Pan", "Level"}),
              "sound 'Level' could be 'Level' (0) or 'Level' (2)");
}

TEST(NameLookup, FindsANumberBetweenANameAndABeginning) {
    EXPECT_EQ(answerFor("6"), "6");
    EXPECT_EQ(answerFor("0"), "0");
    EXPECT_EQ(answerFor("1", {"A", "B", "1"}), "2");
    EXPECT_EQ(answerFor("8"), "4"); // of seven names none is number 8, but one begins so
}

TEST(NameLookup, FindsAWholeNameThatAPlugInHasCut) {
    const std::vector<std::string> cut{"Mode Shi", "Shift In", "Mode"};
    EXPECT_EQ(answerFor("Shift Interval", cut, 8), "1");
    EXPECT_EQ(answerFor("mode shift", cut, 8), "0");
    EXPECT_THAT(answerFor("Mode Shape", cut, 8), HasSubstr("unknown"));
    EXPECT_THAT(answerFor("Shift Interval", cut), HasSubstr("unknown"));
}

TEST(NameLookup, ListsTheCandidatesOfAnAmbiguousBeginning) {
    EXPECT_EQ(answerFor("sleep"), "sound 'sleep' could be 'Sleep Walker' (1), "
                                  "'Sleep Walker Remix' (2) or 'Sleepy' (3)");
}

TEST(NameLookup, NamesTheNearestOfAnUnknownName) {
    EXPECT_EQ(answerFor("Lymon Bas"), "unknown sound 'Lymon Bas'; did you mean 'Lemon Bass'?");
    // A word from the middle, right and wrong.
    EXPECT_EQ(answerFor("remix"), "unknown sound 'remix'; did you mean 'Sleep Walker Remix'?");
    EXPECT_THAT(answerFor("bas"), HasSubstr("did you mean 'Lime Bass' or 'Lemon Bass'?"));
}

TEST(NameLookup, NamesTheListingCommandWhenNothingIsNear) {
    EXPECT_EQ(answerFor("qqqq"), "unknown sound 'qqqq'; 'list' lists them");
    EXPECT_EQ(answerFor(""), "unknown sound ''; 'list' lists them");
}

TEST(NameLookup, TellsTheRangeOfNumbers) {
    EXPECT_EQ(answerFor("7"), "there is no sound 7; they are 0 to 6");
    EXPECT_EQ(answerFor("-1"), "there is no sound -1; they are 0 to 6");
    EXPECT_THAT(answerFor("1", {}), HasSubstr("the plug-in has none"));
}

TEST(NearestNames, CountEditsToTheNearestPart) {
    EXPECT_THAT(nearestNames({"Pots and Pans", "Pads", "Spots"}, "pants", 3),
                ElementsAre("Pots and Pans")); // one letter off; "pads" would be two of five
    EXPECT_THAT(nearestNames({"Organ", "Organ Two"}, "orgn", 2), ElementsAre("Organ", "Organ Two"));
    EXPECT_THAT(nearestNames({"Organ", "Organ Two"}, "orgn", 1), ElementsAre("Organ"));
    EXPECT_THAT(nearestNames({"Organ", "Meow"}, "organ pipe", 3), ElementsAre("Organ"));
    EXPECT_THAT(nearestNames({"Organ", ""}, "", 1), IsEmpty());
}

TEST(WordList, HasItsLastWordBehindTheGivenOne) {
    EXPECT_EQ(wordList({}, "or"), "");
    EXPECT_EQ(wordList({"a"}, "or"), "a");
    EXPECT_EQ(wordList({"a", "b"}, "or"), "a or b");
    EXPECT_EQ(wordList({"a", "b", "c"}, "and"), "a, b and c");
}

} // namespace
} // namespace zelvatone
