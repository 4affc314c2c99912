#include "host/plugin/Programs.h"

#include "host/Error.h"
#include "tests/support/Program.h"

#include <nlohmann/json.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using nlohmann::json;
using ::testing::ElementsAre;

// How names are found in general is NameLookupTest's.
std::string resultOf(const std::string& wanted) {
    try {
        return std::to_string(findProgram({"Default", "Sleep Walker", "Sleepy"}, wanted));
    } catch (const InputError& error) {
        return error.what();
    }
}

TEST(ProgramLookup, SpeaksOfPrograms) {
    EXPECT_EQ(resultOf("sleepy"), "2");
    EXPECT_EQ(resultOf("3"), "unknown program 3; the numbers are 0 to 2");
    EXPECT_EQ(resultOf("sleep"), "program 'sleep' could be 'Sleep Walker' (1) or 'Sleepy' (2)");
    EXPECT_EQ(resultOf("xyzzy"), "unknown program 'xyzzy'; 'zelvatone programs' lists them");
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
