#include "host/plugin/ParameterLookup.h"

#include "host/Error.h"

#include <gtest/gtest.h>

namespace zelvatone {
namespace {

// As an instrument reports them that cuts at eight characters. How names are found in general is
// NameLookupTest's.
const std::vector<std::string> kNames{"Mode Shi", "Shift In", "Modes", "Attack", "Release", "7"};

std::string resultOf(const std::string& wanted) {
    try {
        return std::to_string(findParameter(kNames, wanted));
    } catch (const InputError& error) {
        return error.what();
    }
}

TEST(ParameterLookup, FindsAWholeNameThatThePlugInHasCut) {
    EXPECT_EQ(resultOf("Shift Interval"), "1");
    EXPECT_EQ(resultOf("mode shift"), "0");
}

TEST(ParameterLookup, FindsANumberAndANameBeforeIt) {
    EXPECT_EQ(resultOf("4"), "4");
    EXPECT_EQ(resultOf("7"), "5"); // a name, though there is no parameter 7
}

TEST(ParameterLookup, SpeaksOfParameters) {
    EXPECT_EQ(resultOf("6"), "unknown parameter 6; the numbers are 0 to 5");
    EXPECT_EQ(resultOf("Atack"), "unknown parameter 'Atack'; did you mean 'Attack'?");
    EXPECT_EQ(resultOf("xyzzy"), "unknown parameter 'xyzzy'; 'zelvatone params' lists them");
}

} // namespace
} // namespace zelvatone
