#include "host/plugin/ParameterLookup.h"

#include "host/Error.h"

#include <gtest/gtest.h>

namespace zelvatone {
namespace {

// As an instrument reports them that cuts at eight characters.
const std::vector<std::string> kNames{"Mode Shi", "Shift In", "Modes", "Attack", "Release", "7"};

std::string refusal(const std::vector<std::string>& names, const std::string& wanted) {
    try {
        findParameter(names, wanted);
    } catch (const InputError& error) {
        return error.what();
    }
    return "found";
}

TEST(ParameterLookup, FindsANameInAnyCase) {
    EXPECT_EQ(findParameter(kNames, "Attack"), 3);
    EXPECT_EQ(findParameter(kNames, "aTTACK"), 3);
    EXPECT_EQ(findParameter(kNames, "shift in"), 1);
}

TEST(ParameterLookup, FindsAWholeNameThatThePlugInHasCut) {
    EXPECT_EQ(findParameter(kNames, "Shift Interval"), 1);
    EXPECT_EQ(findParameter(kNames, "mode shift"), 0);
}

TEST(ParameterLookup, DoesNotTakeTheBeginningOfANameForTheName) {
    EXPECT_NE(refusal(kNames, "Shift"), "found");
    EXPECT_NE(refusal(kNames, "Attack2"), "found");
}

TEST(ParameterLookup, FindsANameThatIsNotCut) {
    EXPECT_EQ(findParameter({"Oscillator 1 Detune", "Oscillator 2 Detune"}, "oscillator 2 detune"),
              1);
}

TEST(ParameterLookup, FindsANumberAndANameBeforeIt) {
    EXPECT_EQ(findParameter(kNames, "0"), 0);
    EXPECT_EQ(findParameter(kNames, "4"), 4);
    EXPECT_EQ(findParameter(kNames, "7"), 5); // a name, though there is no parameter 7
}

TEST(ParameterLookup, SaysWhatTheUserMayHaveMeant) {
    EXPECT_EQ(refusal(kNames, "Atack"), "unknown parameter 'Atack'; did you mean 'Attack'?");
    EXPECT_EQ(refusal(kNames, "xyzzy"), "unknown parameter 'xyzzy'");
    EXPECT_EQ(refusal(kNames, ""), "unknown parameter ''");
}

TEST(ParameterLookup, SaysWhichNumbersThereAre) {
    EXPECT_EQ(refusal(kNames, "6"), "there is no parameter 6; they are 0 to 5");
    EXPECT_EQ(refusal(kNames, "-1"), "there is no parameter -1; they are 0 to 5");
}

TEST(ParameterLookup, AsksForTheNumberWhenSeveralHaveTheName) {
    EXPECT_EQ(refusal({"Level", "Pan", "level"}, "Level"),
              "several parameters are called 'Level': 0 2; give the number");
}

} // namespace
} // namespace zelvatone
