#include "host/text/Numbers.h"

#include <gtest/gtest.h>

namespace zelvatone {
namespace {

TEST(Numbers, ReadsWholeNumbersAndNothingElse) {
    EXPECT_EQ(wholeNumber("44100"), 44100);
    EXPECT_EQ(wholeNumber("-3"), -3);
    for (const char* text : {"", " 1", "1 ", "1.0", "1e3", "0x10", "one", "99999999999"}) {
        EXPECT_FALSE(wholeNumber(text).has_value()) << text;
    }
}

TEST(Numbers, ReadsRealNumbersWithAPoint) {
    EXPECT_EQ(realNumber("0.25"), 0.25);
    EXPECT_EQ(realNumber("-6"), -6.0);
    EXPECT_EQ(realNumber("1e-1"), 0.1);
}

TEST(Numbers, RefusesTextThatIsNotANumber) {
    for (const char* text : {"", "nan", "inf", "-inf", "0,5", "1x", "1e999"}) {
        EXPECT_FALSE(realNumber(text).has_value()) << text;
    }
}

TEST(Numbers, WidensAFloatToTheDecimalThatItStandsFor) {
    EXPECT_EQ(shortestDouble(0.2F), 0.2);
    EXPECT_EQ(shortestDouble(1.0F), 1.0);
    EXPECT_EQ(static_cast<float>(shortestDouble(0.095477387F)), 0.095477387F);
}

} // namespace
} // namespace zelvatone
