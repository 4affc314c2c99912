#include "vstguieditor/EditorScale.h"

#include <gtest/gtest.h>

#include <limits>

namespace zelvatone::test {
namespace {

TEST(EditorScale, IsTheNearestQuarterBetweenOneAndThree) {
    const std::pair<double, double> scales[] = {{1, 1},        {1.12, 1},    {1.13, 1.25},
                                                {1.5, 1.5},    {1.66, 1.75}, {2, 2},
                                                {2.125, 2.25}, {2.9, 3},     {3, 3}};
    for (const auto& [wanted, nearest] : scales) {
        EXPECT_EQ(nearestEditorScale(wanted), nearest) << wanted;
    }
}

TEST(EditorScale, StaysInItsRangeWhateverIsWanted) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(nearestEditorScale(0), 1);
    EXPECT_EQ(nearestEditorScale(-2), 1);
    EXPECT_EQ(nearestEditorScale(100), 3);
    EXPECT_EQ(nearestEditorScale(kInfinity), 3);
    EXPECT_EQ(nearestEditorScale(-kInfinity), 1);
    EXPECT_EQ(nearestEditorScale(std::numeric_limits<double>::quiet_NaN()), 1);
}

} // namespace
} // namespace zelvatone::test
