#include "host/audio/Decibels.h"

#include <gtest/gtest.h>

namespace zelvatone {
namespace {

TEST(Decibels, MayHaveASignAndAUnit) {
    EXPECT_EQ(decibelsIn("3"), 3.0);
    EXPECT_EQ(decibelsIn("+3"), 3.0);
    EXPECT_EQ(decibelsIn("-3dB"), -3.0);
    EXPECT_EQ(decibelsIn("3 dB"), 3.0);
    EXPECT_EQ(decibelsIn("+0.5DB"), 0.5);
    EXPECT_EQ(decibelsIn("-120 db"), -120.0);
}

TEST(Decibels, AreNothingElse) {
    for (const char* text : {"", "dB", "+", "+-3", "--3", "- 3", "-3dBFS", "nan", "inf", "120.1",
                             "-121", "0,5", "3 d B", "loud"}) {
        EXPECT_FALSE(decibelsIn(text)) << text;
    }
}

// Ten times the power is ten decibels, and power is the square of the level.
TEST(Decibels, AreTwentyForTenTimesTheLevel) {
    EXPECT_FLOAT_EQ(gainFactor(20.0), 10.0F);
    EXPECT_FLOAT_EQ(gainFactor(-40.0), 0.01F);
    EXPECT_EQ(gainFactor(0.0), 1.0F);
}

} // namespace
} // namespace zelvatone
