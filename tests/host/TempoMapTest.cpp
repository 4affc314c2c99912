#include "host/midi/TempoMap.h"

#include <gtest/gtest.h>

namespace zelvatone {
namespace {

// 480 ticks a quarter: 0.5 s a quarter for two quarters, then 1 s, then from quarter 5 on 0.25 s.
TempoMap slowThenFast() {
    return {480.0, {{0, 0.5}, {960, 1.0}, {2400, 0.25}}};
}

TEST(TempoMap, RunsAtTwoQuartersASecondUntilToldOtherwise) {
    const TempoMap map(96.0, {});
    EXPECT_DOUBLE_EQ(map.secondsAtTick(96), 0.5);
    EXPECT_DOUBLE_EQ(map.tempoAtSeconds(0.0), 120.0);
    EXPECT_DOUBLE_EQ(map.quartersAtSeconds(3.0), 6.0);
}

TEST(TempoMap, AddsUpTheSecondsOfEveryStretch) {
    const TempoMap map = slowThenFast();
    EXPECT_DOUBLE_EQ(map.secondsAtTick(480), 0.5);
    EXPECT_DOUBLE_EQ(map.secondsAtTick(960), 1.0);
    EXPECT_DOUBLE_EQ(map.secondsAtTick(1440), 2.0);        // one slow quarter later
    EXPECT_DOUBLE_EQ(map.secondsAtTick(2400), 4.0);        // three slow quarters later
    EXPECT_DOUBLE_EQ(map.secondsAtTick(2400 + 480), 4.25); // and a fast one
}

TEST(TempoMap, TakesTheNewTempoAtTheVeryMomentOfTheChange) {
    const TempoMap map = slowThenFast();
    EXPECT_DOUBLE_EQ(map.tempoAtSeconds(0.999), 120.0);
    EXPECT_DOUBLE_EQ(map.tempoAtSeconds(1.0), 60.0);
    EXPECT_DOUBLE_EQ(map.tempoAtSeconds(3.999), 60.0);
    EXPECT_DOUBLE_EQ(map.tempoAtSeconds(4.0), 240.0);
}

TEST(TempoMap, CountsQuartersBackFromSeconds) {
    const TempoMap map = slowThenFast();
    EXPECT_DOUBLE_EQ(map.quartersAtSeconds(0.75), 1.5);
    EXPECT_DOUBLE_EQ(map.quartersAtSeconds(1.0), 2.0);
    EXPECT_DOUBLE_EQ(map.quartersAtSeconds(2.5), 3.5);
    EXPECT_DOUBLE_EQ(map.quartersAtSeconds(4.5), 7.0);
}

TEST(TempoMap, LetsTheLastOfSeveralChangesOnOneTickHold) {
    const TempoMap map(480.0, {{480, 2.0}, {480, 0.125}});
    EXPECT_DOUBLE_EQ(map.secondsAtTick(960), 0.625);
    EXPECT_DOUBLE_EQ(map.tempoAtSeconds(0.5), 480.0);
}

// A change at a third of a second lies between two doubles; the block that starts there must not
// be told the old tempo for its whole length.
TEST(TempoMap, IsNotLateByTheRoundingOfASampleToSeconds) {
    const TempoMap map(3.0, {{0, 1.0}, {1, 0.5}});
    EXPECT_DOUBLE_EQ(map.tempoAtSeconds(14700.0 / 44100.0), 120.0);
    EXPECT_DOUBLE_EQ(map.tempoAtSeconds(14699.0 / 44100.0), 60.0);
}

TEST(TempoMap, RangeSpansTheTemposThatHold) {
    const TempoMap::Range range = slowThenFast().tempoRange();
    EXPECT_DOUBLE_EQ(range.lowest, 60.0);
    EXPECT_DOUBLE_EQ(range.highest, 240.0);
    const TempoMap replaced(480.0,
                            {{0, 1.0}, {0, 0.25}}); // the usual one and the first hold nowhere
    EXPECT_DOUBLE_EQ(replaced.tempoRange().lowest, 240.0);
    EXPECT_DOUBLE_EQ(replaced.tempoRange().highest, 240.0);
}

} // namespace
} // namespace zelvatone
