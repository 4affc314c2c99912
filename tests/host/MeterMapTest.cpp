#include "host/midi/MeterMap.h"

#include <gtest/gtest.h>

namespace zelvatone {
namespace {

TEST(MeterMap, CountsFourQuartersABarUntilToldOtherwise) {
    const MeterMap map({});
    EXPECT_DOUBLE_EQ(map.barAt(0.0).startQuarters, 0.0);
    EXPECT_DOUBLE_EQ(map.barAt(3.99).startQuarters, 0.0);
    EXPECT_DOUBLE_EQ(map.barAt(4.0).startQuarters, 4.0);
    EXPECT_EQ(map.barAt(9.0).numerator, 4);
    EXPECT_EQ(map.barAt(9.0).denominator, 4);
}

TEST(MeterMap, MakesABarOfSixEighthsThreeQuartersLong) {
    const MeterMap map({{0.0, 6, 8}});
    EXPECT_DOUBLE_EQ(map.barAt(2.9).startQuarters, 0.0);
    EXPECT_DOUBLE_EQ(map.barAt(3.0).startQuarters, 3.0);
    EXPECT_DOUBLE_EQ(map.barAt(7.0).startQuarters, 6.0);
}

TEST(MeterMap, StartsABarAtEveryChangeOfMeter) {
    const MeterMap map({{0.0, 4, 4}, {5.0, 3, 4}}); // the second bar of four is cut to one
    EXPECT_DOUBLE_EQ(map.barAt(4.5).startQuarters, 4.0);
    EXPECT_DOUBLE_EQ(map.barAt(5.0).startQuarters, 5.0);
    EXPECT_EQ(map.barAt(5.0).numerator, 3);
    EXPECT_DOUBLE_EQ(map.barAt(8.5).startQuarters, 8.0);
}

TEST(MeterMap, DoesNotMissABarLineByRounding) {
    const MeterMap map({{0.0, 3, 8}});
    EXPECT_DOUBLE_EQ(map.barAt(3.0 - 1e-12).startQuarters, 3.0);
}

TEST(MeterMap, ChangesAreCountedWhereTheMeterBecomesAnother) {
    EXPECT_EQ(MeterMap({}).changeCount(), 0);
    EXPECT_EQ(MeterMap({{0.0, 3, 4}}).changeCount(), 0);
    EXPECT_EQ(MeterMap({{4.0, 3, 4}}).changeCount(), 1);
    EXPECT_EQ(MeterMap({{0.0, 3, 4}, {3.0, 3, 4}, {6.0, 4, 4}, {10.0, 3, 4}}).changeCount(), 2);
    EXPECT_EQ(MeterMap({{4.0, 3, 4}, {4.0, 4, 4}}).changeCount(), 0) << "the last one holds";
}

} // namespace
} // namespace zelvatone
