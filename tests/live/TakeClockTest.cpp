#include "live/take/TakeClock.h"

#include <gtest/gtest.h>

namespace zelvatone {
namespace {

TempoMap usualTempo() {
    return {1.0, {}};
}

class TakeClockRates : public ::testing::TestWithParam<int> {};

// Half a second is a quarter note: rate / 2 ticks of a sample each, or twice as many.
TEST_P(TakeClockRates, NamesEverySampleUpTo48KHz) {
    const TakeClock clock(usualTempo(), GetParam());
    for (std::int64_t frame = 0; frame < 200000; ++frame) {
        ASSERT_EQ(clock.nextFrame(frame), frame);
    }
}

INSTANTIATE_TEST_SUITE_P(Usual, TakeClockRates,
                         ::testing::Values(8000, 11025, 22050, 32000, 44100, 48000));

// A header's 32767 ticks cannot name 48000 samples: of 96000 Hz, every second one has a tick.
TEST(TakeClock, MovesToTheNextSecondSampleAt96KHz) {
    const TakeClock clock(usualTempo(), 96000);
    EXPECT_EQ(clock.ticksPerQuarter(), 24000);
    EXPECT_EQ(clock.nextFrame(100), 100);
    EXPECT_EQ(clock.nextFrame(101), 102);
    EXPECT_EQ(clock.tickAt(102), 51);
}

// 480 * 68 = 32640 ticks a quarter note. At tick 480 of the song the tempo halves.
TEST(TakeClock, KeepsTheTicksOfASong) {
    const TempoMap song(480.0, {{480, 1.0}});
    const TakeClock clock(song, 48000);
    EXPECT_EQ(clock.ticksPerQuarter(), 32640);
    for (const std::int64_t tick : {0, 1, 7, 480, 481, 1000}) {
        EXPECT_EQ(clock.tempo().secondsAtTick(tick * 68), song.secondsAtTick(tick)) << tick;
    }
}

TEST(TakeClock, MovesToTheFirstTickAtOrAfterASample) {
    const TakeClock clock(TempoMap(480.0, {{480, 1.0}}), 192000);
    for (std::int64_t frame = 90000; frame < 110000; frame += 17) {
        const std::int64_t tick = clock.tickAt(frame);
        EXPECT_GE(clock.frameAtTick(tick), frame);
        EXPECT_LT(clock.frameAtTick(tick - 1), frame);
    }
}

} // namespace
} // namespace zelvatone
