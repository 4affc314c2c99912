#include "formats/ParameterUnits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>
#include <string>

namespace zelvatone::test {

namespace {

const ParameterUnits& units(ParameterIndex index) {
    return parameterUnits()[static_cast<std::size_t>(index)];
}

TEST(ParameterUnits, EachHasItsIndexAndASymbolOfItsOwn) {
    std::set<std::string> symbols;
    std::int32_t index = 0;
    for (const ParameterUnits& parameter : parameterUnits()) {
        EXPECT_EQ(parameter.index, index++);
        EXPECT_EQ(parameter.symbol.find_first_not_of("abcdefghijklmnopqrstuvwxyz_"),
                  std::string::npos);
        symbols.insert(parameter.symbol);
    }
    EXPECT_EQ(symbols.size(), 23U);
    EXPECT_EQ(kShownParameters, 22);
    EXPECT_EQ(units(kShiftInterval).symbol, "shift_interval");
}

TEST(ParameterUnits, WholeOnesAreTheCountsTheChoicesAndTheBits) {
    std::set<std::string> whole;
    for (const ParameterUnits& parameter : parameterUnits()) {
        if (parameter.isWhole) {
            whole.insert(parameter.name);
        }
    }
    EXPECT_EQ(whole,
              (std::set<std::string>{"Mode Shift", "Shift Interval", "Min Modes", "Max Modes",
                                     "Wave", "Crush", "Mode Init", "Reserved"}));
}

TEST(ParameterUnits, ChoicesHaveTheirTexts) {
    ASSERT_EQ(units(kWave).choices.size(), 5U);
    EXPECT_EQ(units(kWave).choices[4].text, "Son of Poly");
    ASSERT_EQ(units(kShiftInterval).choices.size(), 11U);
    EXPECT_EQ(units(kShiftInterval).choices[0].text, "1/32 beats");
    EXPECT_EQ(units(kShiftInterval).choices[0].value, -5.0F);
    EXPECT_TRUE(units(kMinModes).choices.empty());
}

TEST(ParameterUnits, TextsShowTheUnitOnceAndNoBlankAround) {
    EXPECT_EQ(textOfValue(units(kMaxModes), 20.0F), "20 osc");
    EXPECT_EQ(textOfValue(units(kFalloff), -1.0F), "-1.00");
    EXPECT_EQ(textOfValue(units(kSustain), 0.05F), "5%");
    EXPECT_EQ(textOfValue(units(kShiftInterval), -2.0F), "1/4 beats");
    EXPECT_EQ(textOfValue(units(kWave), 2.0F), "Saw");
    EXPECT_EQ(textOfValue(units(kAttack), 0.2F), "0.20 s");
}

TEST(ParameterUnits, ReadingATextGivesTheSameText) {
    for (const ParameterUnits& parameter : parameterUnits()) {
        for (int i = 0; i <= 200; ++i) {
            const double min = parameter.min;
            const double asked = min + (parameter.max - min) * i / 200.0;
            const std::string text = textOfValue(parameter, nearestValue(parameter, asked));
            const auto value = valueOfText(parameter, text);
            ASSERT_TRUE(value) << text;
            EXPECT_EQ(textOfValue(parameter, *value), text) << parameter.name;
        }
    }
}

TEST(ParameterUnits, WholeNumbersComeBackFromTheirTexts) {
    for (const ParameterUnits& parameter : parameterUnits()) {
        for (float value = parameter.min; parameter.isWhole && value <= parameter.max; ++value) {
            EXPECT_EQ(valueOfText(parameter, textOfValue(parameter, value)), value)
                << parameter.name;
        }
    }
}

TEST(ParameterUnits, TextsAreReadWithAndWithoutUnitAndInAnyCase) {
    EXPECT_EQ(valueOfText(units(kAttack), " 0.25 S "), 0.25F);
    EXPECT_EQ(valueOfText(units(kAttack), "0.25"), 0.25F);
    EXPECT_EQ(valueOfText(units(kWave), "son of poly"), 4.0F);
    EXPECT_EQ(valueOfText(units(kShiftInterval), "1/4"), -2.0F);
    EXPECT_EQ(valueOfText(units(kShiftInterval), "32 beats"), 5.0F);
    EXPECT_EQ(valueOfText(units(kSustain), "70%"), 0.7F);
    EXPECT_EQ(valueOfText(units(kModeShift), "+3"), 3.0F);
    EXPECT_EQ(valueOfText(units(kMinModes), "1000"), 100.0F);
}

TEST(ParameterUnits, OtherTextsHaveNoValue) {
    for (const char* text :
         {"", " ", "s", "0.2 Hz", "0,2", "nan", "inf", "1e999", "0.2 s s", "--1"}) {
        EXPECT_FALSE(valueOfText(units(kAttack), text)) << text;
    }
    EXPECT_FALSE(valueOfText(units(kWave), "2"));
    EXPECT_FALSE(valueOfText(units(kShiftInterval), "3 beats"));
}

TEST(ParameterUnits, NearestValueRoundsWholeOnesAndKeepsTheRange) {
    EXPECT_EQ(nearestValue(units(kMinModes), 52.9999999), 53.0F);
    EXPECT_EQ(nearestValue(units(kModeShift), -1.5), -2.0F);
    EXPECT_FALSE(std::signbit(nearestValue(units(kModeShift), -0.1)));
    EXPECT_EQ(nearestValue(units(kAttack), 99.0), 2.0F);
    EXPECT_EQ(nearestValue(units(kAttack), -std::numeric_limits<double>::infinity()), 0.01F);
    EXPECT_EQ(nearestValue(units(kAttack), std::nan("")), 0.2F);
}

} // namespace

} // namespace zelvatone::test
