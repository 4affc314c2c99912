#include "tests/support/Program.h"

#include <nlohmann/json.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::Not;

json jsonOf(const std::vector<std::string>& arguments) {
    const ProgramResult result = zelvatoneWith(arguments);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    return json::parse(result.output); // throws for anything around it
}

TEST(InfoCommand, WritesWhatThePlugInSaysAsJson) {
    const json info = jsonOf({"info", "--json", "--plugin", testPlugin("pulse")});
    EXPECT_EQ(info["name"], "Pulse");
    EXPECT_EQ(info["uniqueIdText"], "puls");
    EXPECT_EQ(info["vstVersion"], 2400);
    EXPECT_EQ(info["category"], "synth");
    EXPECT_EQ(info["instrument"], true);
    EXPECT_EQ(info["parameters"], 3);
    EXPECT_EQ(info["inputs"], 0);
    EXPECT_EQ(info["outputs"], 2);
    EXPECT_EQ(info["editor"], false);
}

TEST(InfoCommand, WritesATableForPeople) {
    const auto result = zelvatoneWith({"info", "--plugin", testPlugin("pulse")});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr("Name              Pulse\n"));
    EXPECT_EQ(result.errors, "");
}

TEST(InfoCommand, DescribesAnEffectToo) {
    EXPECT_EQ(jsonOf({"info", "--json", "--plugin", testPlugin("effect")})["instrument"], false);
}

TEST(ParamsCommand, ListsEveryParameter) {
    const json list = jsonOf({"params", "--json", "--plugin", testPlugin("pulse")});
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[1]["index"], 1);
    EXPECT_EQ(list[1]["name"], "Shift In");
    EXPECT_EQ(list[1]["value"], 0.5);
    EXPECT_EQ(list[1]["display"], "0.50");
}

TEST(ParamsCommand, HasWholeNamesAndTakesValuesAsTheyAreShown) {
    const json list = jsonOf({"params", "--json", "--set", "Wave=Saw", "--set", "Attack=0.5 s",
                              "--set", "Shift Interval=1/4 beats"});
    EXPECT_EQ(list[1]["name"], "Shift Interval");
    EXPECT_EQ(list[1]["display"], "1/4 beat"); // as the plug-in cuts it
    EXPECT_EQ(list[13]["display"], "Saw");
    EXPECT_EQ(list[18]["display"], "0.50 s");
    const auto result = zelvatoneWith({"params", "--set", "Attack=5 s"});
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.errors, "zelvatone: --set takes values from 0 to 1 or as Attack shows them, "
                             "'0.01 s' to '2.00 s', not '5 s'\n");
}

TEST(ParamsCommand, WritesATableForPeople) {
    const auto result = zelvatoneWith({"params", "--plugin", testPlugin("pulse")});
    EXPECT_EQ(result.output, "Index  Name      Label   Value  Display\n"
                             "    0  Level            1.0000  1.00\n"
                             "    1  Shift In         0.5000  0.50\n"
                             "    2  Spare            0.0000  0.00\n");
}

TEST(ParamsCommand, ShowsValuesThatWereSetByNameAndByNumber) {
    const json list = jsonOf({"params", "--json", "--plugin", testPlugin("pulse"), "--set",
                              "SHIFT INTERVAL=0.2", "--set", "2=1", "--set", "2=0.75"});
    EXPECT_EQ(list[1]["value"], 0.2);
    EXPECT_EQ(list[2]["value"], 0.75);
}

TEST(ParamsCommand, WritesValidJsonWhateverThePlugInSaysAndPrints) {
    const json list = jsonOf({"params", "--json", "--plugin", testPlugin("babbler")});
    EXPECT_EQ(list[0]["name"], "A name of far more than eight letters");
    EXPECT_EQ(list[1]["name"], "Temp \u00b0C");
    EXPECT_EQ(list[0]["display"], "[31mred \"quoted\"");
}

TEST(ParamsCommand, ShowsWhatThePlugInPrintsOnDemandOnly) {
    const auto quiet = zelvatoneWith({"params", "--plugin", testPlugin("babbler")});
    EXPECT_THAT(quiet.output, Not(HasSubstr("babble")));
    EXPECT_EQ(quiet.errors, "");
    const auto loud = zelvatoneWith({"params", "--verbose", "--plugin", testPlugin("babbler")});
    EXPECT_EQ(loud.output, quiet.output);
    EXPECT_THAT(loud.errors, HasSubstr("babble"));
}

} // namespace
} // namespace zelvatone
