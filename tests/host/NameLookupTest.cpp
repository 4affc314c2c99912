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

std::string resultOf(const std::string& wanted, const std::vector<std::string>& names = kNames,
                     std::size_t cutLength = 0) {
    try {
        const NameLookup lookup({"sound", "list", cutLength}, names);
        return std::to_string(lookup.find(wanted));
    } catch (const InputError& error) {
        return error.what();
    }
}

TEST(NameLookup, FindsANameThatOthersBeginWith) {
    EXPECT_EQ(resultOf("Sleep Walker"), "1");
}

TEST(NameLookup, FindsANameInAnyCase) {
    EXPECT_EQ(resultOf("sleep WALKER remix"), "2");
}

TEST(NameLookup, FindsAUniqueBeginningInAnyCase) {
    EXPECT_EQ(resultOf("sleepy"), "3");
    EXPECT_EQ(resultOf("LI"), "5");
    EXPECT_EQ(resultOf("d"), "0");
    EXPECT_THAT(resultOf("Sleepy2"), HasSubstr("unknown"));
}

TEST(NameLookup, PrefersExactCaseToAnyCase) {
    EXPECT_EQ(resultOf("bass", {"Bass", "bass", "BASS"}), "1");
    EXPECT_EQ(resultOf("bASS", {"Bass", "bass"}), "sound 'bASS' could be 'Bass' (0) or 'bass' (1)");
}

TEST(NameLookup, TellsNamesThatAreTheSameByTheirNumbers) {
    EXPECT_EQ(resultOf("Level", {"Level", "Pan", "Level"}),
              "sound 'Level' could be 'Level' (0) or 'Level' (2)");
}

TEST(NameLookup, FindsANumberBetweenANameAndABeginning) {
    EXPECT_EQ(resultOf("6"), "6");
    EXPECT_EQ(resultOf("0"), "0");
    EXPECT_EQ(resultOf("1", {"A", "B", "1"}), "2");
    EXPECT_EQ(resultOf("8"), "4"); // of seven names none is number 8, but one begins so
}

TEST(NameLookup, FindsAWholeNameThatAPlugInHasCut) {
    const std::vector<std::string> cut{"Mode Shi", "Shift In", "Mode"};
    EXPECT_EQ(resultOf("Shift Interval", cut, 8), "1");
    EXPECT_EQ(resultOf("mode shift", cut, 8), "0");
    EXPECT_THAT(resultOf("Mode Shape", cut, 8), HasSubstr("unknown"));
    EXPECT_THAT(resultOf("Shift Interval", cut), HasSubstr("unknown"));
}

TEST(NameLookup, ListsTheCandidatesOfAnAmbiguousBeginning) {
    EXPECT_EQ(resultOf("sleep"), "sound 'sleep' could be 'Sleep Walker' (1), "
                                 "'Sleep Walker Remix' (2) or 'Sleepy' (3)");
}

TEST(NameLookup, NamesTheNearestOfAnUnknownName) {
    EXPECT_EQ(resultOf("Lymon Bas"), "unknown sound 'Lymon Bas'; did you mean 'Lemon Bass'?");
    // A word from the middle, right and wrong.
    EXPECT_EQ(resultOf("remix"), "unknown sound 'remix'; did you mean 'Sleep Walker Remix'?");
    EXPECT_THAT(resultOf("bas"), HasSubstr("did you mean 'Lime Bass' or 'Lemon Bass'?"));
}

TEST(NameLookup, NamesTheListingCommandWhenNothingIsNear) {
    EXPECT_EQ(resultOf("qqqq"), "unknown sound 'qqqq'; 'list' lists them");
    EXPECT_EQ(resultOf(""), "unknown sound ''; 'list' lists them");
}

TEST(NameLookup, TellsTheRangeOfNumbers) {
    EXPECT_EQ(resultOf("7"), "unknown sound 7; the numbers are 0 to 6");
    EXPECT_EQ(resultOf("-1"), "unknown sound -1; the numbers are 0 to 6");
    EXPECT_THAT(resultOf("1", {}), HasSubstr("the plug-in has none"));
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
