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

} // namespace
} // namespace zelvatone
