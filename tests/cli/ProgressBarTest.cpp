#include "cli/terminal/ProgressBar.h"

#include <gtest/gtest.h>

namespace zelvatone {
namespace {

TEST(ProgressBar, FillsFromLeftToRight) {
    EXPECT_EQ(progressLine(0.0, 4, "slow"), "[....]   0 %  slow");
    EXPECT_EQ(progressLine(0.5, 4, "slow"), "[##..]  50 %  slow");
    EXPECT_EQ(progressLine(1.0, 4, ""), "[####] 100 %  ");
}

TEST(ProgressBar, StaysWithinItsEnds) {
    EXPECT_EQ(progressLine(1.7, 4, ""), "[####] 100 %  ");
    EXPECT_EQ(progressLine(-1.0, 4, ""), "[....]   0 %  ");
}

// Of 20 columns one stays free; "[] ", "100 %" and two spaces take ten, the note four.
TEST(ProgressBar, LeavesPlaceForItsLineInTheTerminal) {
    EXPECT_EQ(progressWidth(20, "slow"), 20 - 1 - 10 - 4);
    EXPECT_LT(progressLine(1.0, progressWidth(20, "slow"), "slow").size(), 20U);
    EXPECT_EQ(progressWidth(200, "slow"), 40);
}

TEST(ProgressBar, IsTextAloneWhereThereIsNoPlace) {
    EXPECT_EQ(progressWidth(17, "slow"), 0);
    EXPECT_EQ(progressWidth(0, ""), 0);
    EXPECT_EQ(progressLine(0.5, 0, "slow"), " 50 %  slow");
}

} // namespace
} // namespace zelvatone
