#include "host/plugin/ShownValue.h"

#include "host/Error.h"
#include "host/plugin/FullNames.h"
#include "host/plugin/PluginLibrary.h"
#include "host/render/Automation.h"
#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace zelvatone {
namespace {

class ShownValue : public ::testing::Test {
protected:
    // What the instrument shows of a parameter that is set to the value of a text.
    std::string shownAfter(int index, const std::string& wanted) {
        const auto value = valueShownAs(plugin_, index, wanted);
        if (!value) {
            return "none";
        }
        plugin_.setParameter(index, *value);
        return plugin_.text(effGetParamDisplay, index);
    }

    const PluginLibrary library_{TEST_INSTRUMENT};
    HostedPlugin plugin_{library_, StreamFormat{}};
};

constexpr int kShiftInterval = 1;
constexpr int kMinModes = 2;
constexpr int kJitter = 6;
constexpr int kFreqDrop = 7;
constexpr int kWave = 13;
constexpr int kAttack = 18;
constexpr int kSustain = 20;

TEST_F(ShownValue, IsFoundForEveryKindOfText) {
    EXPECT_EQ(shownAfter(kWave, "Saw"), "Saw");
    EXPECT_EQ(shownAfter(kWave, "sine"), "Sine");
    EXPECT_EQ(shownAfter(kAttack, "0.5 s"), "0.50 s");
    EXPECT_EQ(shownAfter(kAttack, "2s"), "2.00 s");
    EXPECT_EQ(shownAfter(kMinModes, "+17 osc"), "17 osc");
    EXPECT_EQ(shownAfter(kSustain, "45 %"), "45%");
    EXPECT_EQ(shownAfter(kFreqDrop, "-7.99"), "-7.99");
    EXPECT_EQ(shownAfter(kJitter, "33.33 Hz"), "33.33 Hz"); // finer than the search's steps
}

// The interface has eight letters for what is shown.
TEST_F(ShownValue, IsFoundForAWholeTextThatThePlugInHasCut) {
    EXPECT_EQ(shownAfter(kShiftInterval, "1/4 beats"), "1/4 beat");
    EXPECT_EQ(shownAfter(kShiftInterval, "1/32 beats"), "1/32 bea");
    EXPECT_EQ(shownAfter(kWave, "Son of Poly"), "Son of P");
}

// From 0.01 s to 2 s; 0.495 to 0.505 s shows as half a second.
TEST_F(ShownValue, IsTheMiddleOfThoseThatShowTheSame) {
    EXPECT_NEAR(*valueShownAs(plugin_, kAttack, "0.5 s"), (0.5 - 0.01) / (2.0 - 0.01), 1e-5);
    // Waves are 0 to 4, without what follows the point: the third is from 2 to 3.
    EXPECT_NEAR(*valueShownAs(plugin_, kWave, "Saw"), 2.5 / 4.0, 1e-5);
}

TEST_F(ShownValue, IsNoneForWhatIsNeverShown) {
    for (const char* text : {"5 s", "half", "0.5 Hz", "", "0.505 s", "nan s"}) {
        EXPECT_EQ(shownAfter(kAttack, text), "none") << text;
    }
    EXPECT_EQ(shownLimits(plugin_, kAttack), "'0.01 s' to '2.00 s'");
}

TEST_F(ShownValue, LeavesTheParameterAsItWas) {
    const float before = plugin_.parameter(kAttack);
    valueShownAs(plugin_, kAttack, "2 s");
    valueShownAs(plugin_, kAttack, "half");
    shownLimits(plugin_, kAttack);
    EXPECT_EQ(plugin_.parameter(kAttack), before);
}

TEST(ShownMoves, AreReadByParameter) {
    const auto reader = [](int parameter, std::string_view text) {
        return parameter == 1 && text == "Saw" ? std::optional(0.625F) : std::nullopt;
    };
    const auto moves = parseAutomation("0,Wave,Saw\n1,Wave,0.5\n", {"Level", "Wave"}, reader);
    EXPECT_EQ(moves.at(0).value, 0.625F);
    EXPECT_EQ(moves.at(1).value, 0.5F);
    EXPECT_THROW(parseAutomation("0,Level,Saw\n", {"Level", "Wave"}, reader), InputError);
}

// The plug-in's own table of parameters has a line for each: put(kAttack, new Value("Attack", ...
std::vector<std::string> namesInTheSource() {
    std::ifstream source(TEST_PARAMETER_TABLE);
    std::vector<std::string> names;
    for (std::string line; std::getline(source, line);) {
        const std::size_t quote = line.find('"');
        if (line.find("put(k") != std::string::npos && quote != std::string::npos) {
            names.push_back(line.substr(quote + 1, line.find('"', quote + 1) - quote - 1));
        }
    }
    return names;
}

TEST(FullNames, AreThoseOfTheInstrumentsOwnTable) {
    const PluginLibrary library(TEST_INSTRUMENT);
    HostedPlugin plugin(library, StreamFormat{});
    std::vector<std::string> names;
    for (int i = 0; i < plugin.parameterCount(); ++i) {
        names.push_back(parameterName(plugin, i));
    }
    EXPECT_EQ(names.size(), 23U);
    EXPECT_EQ(names, namesInTheSource());
}

TEST(FullNames, AreAsReportedForOtherPlugIns) {
    const PluginLibrary library(testPlugin("pulse"));
    HostedPlugin plugin(library, StreamFormat{});
    EXPECT_EQ(parameterName(plugin, 1), "Shift In");
}

} // namespace
} // namespace zelvatone
