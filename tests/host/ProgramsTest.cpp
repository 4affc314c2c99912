#include "host/plugin/Programs.h"

#include "host/Error.h"
#include "host/text/Names.h"
#include "tests/support/Program.h"

#include <nlohmann/json.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const std::vector<std::string> kNames{"Default", "Sleep Walker", "Sleep Walker Remix", "Sleepy",
                                      "8 Bits",  "Lime Bass",    "Lemon Bass"};

std::string answerFor(const std::string& wanted, const std::vector<std::string>& names = kNames) {
    try {
        return std::to_string(findProgram(names, wanted));
    } catch (const InputError& error) {
        return error.what();
    }
}

TEST(ProgramLookup, FindsANameThatOthersBeginWith) {
    EXPECT_EQ(answerFor("Sleep Walker"), "1");
}

TEST(ProgramLookup, FindsANameInAnyCase) {
    EXPECT_EQ(answerFor("sleep WALKER remix"), "2");
}

TEST(ProgramLookup, FindsAUniqueBeginningInAnyCase) {
    EXPECT_EQ(answerFor("sleepy"), "3");
    EXPECT_EQ(answerFor("LI"), "5");
    EXPECT_EQ(answerFor("d"), "0");
}

TEST(ProgramLookup, PrefersExactCaseToAnyCase) {
    EXPECT_EQ(answerFor("bass", {"Bass", "bass", "BASS"}), "1");
    EXPECT_EQ(answerFor("bASS", {"Bass", "bass"}),
              "program 'bASS' could be 'Bass' (0) or 'bass' (1)");
}

TEST(ProgramLookup, FindsANumberBeforeABeginning) {
    EXPECT_EQ(answerFor("6"), "6");
    EXPECT_EQ(answerFor("0"), "0");
    EXPECT_EQ(answerFor("8"), "4"); // there is no program 8, but one that begins so
}

TEST(ProgramLookup, ListsTheCandidatesOfAnAmbiguousBeginning) {
    EXPECT_EQ(answerFor("sleep"), "program 'sleep' could be 'Sleep Walker' (1), "
                                  "'Sleep Walker Remix' (2) or 'Sleepy' (3)");
}

TEST(ProgramLookup, NamesTheNearestOfAnUnknownName) {
    EXPECT_EQ(answerFor("Lymon Bas"), "unknown program 'Lymon Bas'; did you mean 'Lemon Bass'?");
    // A word from the middle, right and wrong.
    EXPECT_EQ(answerFor("remix"), "unknown program 'remix'; did you mean 'Sleep Walker Remix'?");
    EXPECT_THAT(answerFor("bas"), HasSubstr("did you mean 'Lime Bass' or 'Lemon Bass'?"));
}

TEST(ProgramLookup, PointsToTheListWhenNothingIsNear) {
    EXPECT_THAT(answerFor("qqqq"), HasSubstr("'zelvatone programs' lists"));
    EXPECT_THAT(answerFor(""), HasSubstr("'zelvatone programs' lists"));
}

TEST(ProgramLookup, TellsTheRangeOfNumbers) {
    EXPECT_EQ(answerFor("7"), "there is no program 7; they are 0 to 6");
    EXPECT_EQ(answerFor("-1"), "there is no program -1; they are 0 to 6");
    EXPECT_THAT(answerFor("1", {}), HasSubstr("the plug-in has none"));
}

TEST(NearestNames, CountsEditsToTheNearestPart) {
    EXPECT_THAT(nearestNames({"Pots and Pans", "Pads", "Spots"}, "pants", 3),
                ElementsAre("Pots and Pans")); // one letter off; "pads" would be two of five
    EXPECT_THAT(nearestNames({"Organ", "Organ Two"}, "orgn", 2), ElementsAre("Organ", "Organ Two"));
    EXPECT_THAT(nearestNames({"Organ", "Organ Two"}, "orgn", 1), ElementsAre("Organ"));
    EXPECT_THAT(nearestNames({"Organ", "Meow"}, "organ pipe", 3), ElementsAre("Organ"));
    EXPECT_THAT(nearestNames({"Organ", ""}, "", 1), IsEmpty());
}

TEST(Programs, AreNamedByAPlugInThatTellsTheCurrentNameOnly) {
    const PluginLibrary library(testPlugin("programmed"));
    HostedPlugin plugin(library, {});
    selectProgram(plugin, 2);
    EXPECT_THAT(programNames(plugin), ElementsAre("Low", "High", "High Low", "Up/Down"));
    EXPECT_EQ(currentProgram(plugin), 2);
}

json jsonOf(const std::vector<std::string>& arguments) {
    const ProgramResult result = zelvatoneWith(arguments);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    return json::parse(result.output);
}

TEST(ProgramsCommand, ListsTheBankOfTheInstrument) {
    const json list = jsonOf({"programs", "--json"});
    ASSERT_EQ(list.size(), 42U);
    EXPECT_EQ(list[0]["name"], "Default");
    EXPECT_EQ(list[21]["number"], 21);
    EXPECT_EQ(list[21]["name"], "Organ");
    EXPECT_EQ(list[41]["name"], "Turbo Space Organ");
}

TEST(ProgramsCommand, WritesATableForPeople) {
    EXPECT_EQ(zelvatoneWith({"programs", "--plugin", testPlugin("programmed")}).output,
              "Number  Name\n"
              "     0  Low\n"
              "     1  High\n"
              "     2  High Low\n"
              "     3  Up/Down\n");
}

// By hand from the program's fractions: 0.166667 of -3..3 floored is -2; 0.17 of 0..100 is 17;
// 0.78 of -3..0 is -0.66; 0.47422 of 0.01..2 s is 0.95.
TEST(ParamsCommand, ShowsAProgramAsTheInstrumentDisplaysIt) {
    const json list = jsonOf({"params", "--program", "Organ", "--json"});
    ASSERT_EQ(list.size(), 23U);
    EXPECT_EQ(list[0]["display"], "-2 osc");
    EXPECT_EQ(list[2]["display"], "17 osc");
    EXPECT_EQ(list[4]["display"], "-0.66");
    EXPECT_EQ(list[13]["display"], "Sine");
    EXPECT_EQ(list[20]["display"], "70%");
    EXPECT_EQ(list[21]["display"], "0.95 s");
}

TEST(ParamsCommand, SetsParametersOfTheChosenProgram) {
    const json list = jsonOf({"params", "--json", "--plugin", testPlugin("programmed"), "--program",
                              "high low", "--set", "Percent=0.75"});
    EXPECT_EQ(list[0]["value"], 0.25);
    EXPECT_EQ(list[1]["value"], 0.75);
}

} // namespace
} // namespace zelvatone
