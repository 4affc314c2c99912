#include "dataset/PlanText.h"

#include "host/Error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;

TEST(PlanText, NumbersAreSortedAndEachIsThereOnce) {
    EXPECT_THAT(numbersOf("--notes", "60", 0, 127), ElementsAre(60));
    EXPECT_THAT(numbersOf("--notes", "72,60-63,62", 0, 127), ElementsAre(60, 61, 62, 63, 72));
}

TEST(PlanText, BadNumbersAreRefused) {
    for (const char* text : {"", "128", "-1", "60-", "63-60", "60,,61", "C4", "1.5"}) {
        EXPECT_THROW(numbersOf("--notes", text, 0, 127), UsageError) << text;
    }
}

TEST(PlanText, ProgramsAreFoundAsEverywhere) {
    EXPECT_EQ(programsOf("all").size(), 42U);
    EXPECT_THAT(programsOf("banana b,0,1"), ElementsAre(0, 1));
    EXPECT_THROW(programsOf("No Such Thing"), InputError);
    EXPECT_THROW(programsOf("42"), UsageError);
}

ValueRange rangeOf(const std::string& text) {
    const auto ranges = rangesOf(text);
    EXPECT_EQ(ranges.size(), 1U);
    return ranges.at(0);
}

// Attack reaches from 0.01 s to 2 s.
TEST(PlanText, RangeOfTwoSharesIsNormalised) {
    const ValueRange range = rangeOf("Attack=0:0.5");
    EXPECT_EQ(range.parameter, kAttack);
    EXPECT_FLOAT_EQ(range.low, 0.01F);
    EXPECT_FLOAT_EQ(range.high, 1.005F);
}

TEST(PlanText, RangeOfShownValuesIsInUnits) {
    EXPECT_FLOAT_EQ(rangeOf("attack=0.02 s:1.5 s").low, 0.02F);
    EXPECT_FLOAT_EQ(rangeOf("Max Modes=20:60").high, 60.0F);
    EXPECT_FLOAT_EQ(rangeOf("Wave=Sine:Saw").high, 2.0F);
    EXPECT_FLOAT_EQ(rangeOf("Shift Interval=1/4 beats:4 beats").low, -2.0F);
}

TEST(PlanText, AllVariesEveryParameterThatIsShown) {
    EXPECT_EQ(rangesOf("all").size(), 22U); // "Reserved" shapes nothing
}

TEST(PlanText, BadRangesAreRefused) {
    for (const char* text : {"", "Attack", "Attack=", "Attack=0", "=0:1", "Attack=0:", "Attack=a:b",
                             "Attack=0.5:0.1"}) {
        EXPECT_THROW(rangesOf(text), UsageError) << text;
    }
    EXPECT_THROW(rangesOf("Loudness=0:1"), InputError);
}

TEST(PlanText, ShareIsOneOfSo) {
    EXPECT_EQ(shareOf("2/8").part, 2);
    EXPECT_EQ(shareOf("2/8").parts, 8);
    for (const char* text : {"", "1", "0/4", "5/4", "1/0", "a/b", "1/4/2"}) {
        EXPECT_THROW(shareOf(text), UsageError) << text;
    }
}

} // namespace
} // namespace zelvatone
