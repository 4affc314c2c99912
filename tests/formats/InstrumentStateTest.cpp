#include "formats/InstrumentState.h"

#include "formats/ParameterUnits.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>
#include <string>

namespace zelvatone::test {

namespace {

float& valueIn(InstrumentState& state, ParameterIndex index) {
    return state.values.at(static_cast<std::size_t>(index));
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t place = text.find(from);
    EXPECT_NE(place, std::string::npos) << from;
    return text.replace(place, from.size(), to);
}

TEST(InstrumentState, TextIsOfOneLineForEachValue) {
    const std::string text = textOfState(defaultState());
    EXPECT_TRUE(text.starts_with("Zelvatone state 1\nMode Shift = 0\nShift Interval = 1\n"))
        << text;
    EXPECT_TRUE(text.ends_with("Release = 0.3\nReserved = 0\nBypass = 0\n")) << text;
}

TEST(InstrumentState, EveryWholeNumberComesBack) {
    for (const ParameterUnits& parameter : parameterUnits()) {
        for (float value = parameter.min; parameter.isWhole && value <= parameter.max; ++value) {
            InstrumentState state = defaultState();
            valueIn(state, parameter.index) = value;
            EXPECT_EQ(stateOfText(textOfState(state)), state) << parameter.name << ' ' << value;
        }
    }
}

// Floats are taken by their bits, so that small ones come as often as large ones.
TEST(InstrumentState, EveryFloatComesBackToTheBit) {
    std::mt19937 random(1);
    for (const ParameterUnits& parameter : parameterUnits()) {
        for (int i = 0; !parameter.isWhole && i < 300;) {
            const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
            if (!(value >= parameter.min && value <= parameter.max)) {
                // Most bits lie outside: one float of the range itself, too.
                ++i;
                continue;
            }
            InstrumentState state = defaultState();
            valueIn(state, parameter.index) = value;
            auto read = stateOfText(textOfState(state));
            ASSERT_TRUE(read);
            EXPECT_EQ(std::bit_cast<std::uint32_t>(valueIn(*read, parameter.index)),
                      std::bit_cast<std::uint32_t>(value));
            ++i;
        }
        for (float value = parameter.min; !parameter.isWhole && value < parameter.max;
             value += (parameter.max - parameter.min) * 0.00731F) {
            InstrumentState state = defaultState();
            valueIn(state, parameter.index) = value;
            EXPECT_EQ(stateOfText(textOfState(state)), state);
        }
    }
}

TEST(InstrumentState, LongestValuesFitIntoTheLimit) {
    InstrumentState state = defaultState();
    for (const ParameterUnits& parameter : parameterUnits()) {
        valueIn(state, parameter.index) =
            parameter.isWhole ? parameter.min : std::nextafter(parameter.min, parameter.max);
    }
    EXPECT_LT(textOfState(state).size(), kMostStateBytes);
}

TEST(InstrumentState, EveryShorterTextIsRefused) {
    const std::string text = textOfState(defaultState());
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_FALSE(stateOfText(text.substr(0, length))) << length;
    }
}

TEST(InstrumentState, OtherTextsAreRefused) {
    const std::string text = textOfState(defaultState());
    EXPECT_FALSE(stateOfText(text + "\n"));
    EXPECT_FALSE(stateOfText(text + text));
    EXPECT_FALSE(stateOfText(" " + text));
    EXPECT_FALSE(stateOfText(replaced(text, "state 1", "state 2")));
    for (const char* value : {"nan", "inf", "-inf", "2.5", "0.001", "", "0,2", "0.2 s", "0x1"}) {
        EXPECT_FALSE(stateOfText(replaced(text, "Attack = 0.2", std::string("Attack = ") + value)))
            << value;
    }
    EXPECT_FALSE(stateOfText(replaced(text, "Max Modes = 20", "Max Modes = 20.5")));
    EXPECT_FALSE(stateOfText(replaced(text, "Max Modes = 20", "Max Modes = 101")));
    EXPECT_FALSE(stateOfText(replaced(text, "Max Modes", "Mix Modes")));
    EXPECT_FALSE(stateOfText(replaced(text, "Bypass = 0", "Bypass = 2")));
    EXPECT_FALSE(stateOfText(replaced(text, "\nParity = 0", "")));
    EXPECT_FALSE(stateOfText(std::string(4096, '\0')));
}

} // namespace

} // namespace zelvatone::test
