// When the modes shift: the float clock of the note against the "Shift Interval".
//
// Samples count from 0, so "at sample n" means that n samples of the note were rendered before.
// The expected samples are those of a clock that a Python script ran: doubles rounded to float
// through its struct module, r = fmod(clock, period), a shift where r + 1 / rate > period.
#include "tests/voice/VoiceBench.h"

#include <numeric>
#include <vector>

namespace zelvatone {
namespace {

class ShiftSchedule : public VoiceBench {
protected:
    ShiftSchedule() {
        settings_.secondsPerSample = 1.0 / 44100.0;
        settings_.shiftBeats = 2.0;
        settings_.modeShift = 1;
    }

    // Renders `samples` samples and returns at which of them the voice shifted: each shift raises
    // the count from 0 to 1, and the bench puts it back.
    std::vector<int> shiftsIn(int samples) {
        std::vector<int> shifts;
        for (int n = 0; n < samples; ++n, ++rendered_) {
            voice_.targetCount = 0;
            voice_.activeCount = 0;
            voice_.tick();
            if (voice_.targetCount != 0) {
                shifts.push_back(rendered_);
            }
        }
        return shifts;
    }

    static std::vector<int> everySampleOf(int samples) {
        std::vector<int> all(static_cast<std::size_t>(samples));
        std::iota(all.begin(), all.end(), 0);
        return all;
    }

    int rendered_ = 0;
};

using Samples = std::vector<int>;

TEST_F(ShiftSchedule, ShiftsFirstAtSample44122WithTwoBeatsAt120) {
    EXPECT_EQ(shiftsIn(180000), (Samples{44122, 88273, 132424, 176574}));
}

TEST_F(ShiftSchedule, FollowsTheClockOfTheSampleRate) {
    settings_.secondsPerSample = 1.0 / 48000.0;
    EXPECT_EQ(shiftsIn(200000), (Samples{47969, 95903, 144114, 192324}));
}

TEST_F(ShiftSchedule, IsTheClockSummedInFloat) {
    // The same in this file's own arithmetic: the sum in double, rounded at each sample.
    Samples expected;
    float clock = 0.0F;
    for (int n = 0; n < 100000; ++n) {
        const double sinceShift = clock - std::floor(clock / 0.125) * 0.125; // exact: 0.125 = 2^-3
        if (sinceShift + 1.0 / 44100.0 > 0.125) {
            expected.push_back(n);
        }
        clock = static_cast<float>(clock + 1.0 / 44100.0);
    }
    settings_.shiftBeats = 0.25;
    EXPECT_EQ(shiftsIn(100000), expected);
    EXPECT_EQ(expected.size(), 18U);
}

TEST_F(ShiftSchedule, BeginsAnewWithEachNote) {
    EXPECT_EQ(shiftsIn(50000), Samples{44122});
    voice_.start(100.0F);
    rendered_ = 0;
    EXPECT_EQ(shiftsIn(50000), Samples{44122});
}

TEST_F(ShiftSchedule, IsFasterAtAFasterTempo) {
    settings_.tempo = 240.0;
    EXPECT_EQ(shiftsIn(90000), (Samples{22047, 44122, 66198, 88273}));
    voice_.start(100.0F);
    rendered_ = 0;
    settings_.tempo = 140.0; // 0.857 seconds, which no float is exactly
    EXPECT_EQ(shiftsIn(90000), (Samples{37815, 75659}));
}

TEST_F(ShiftSchedule, FollowsTheTempoAtOnceAndKeepsTheNotesClock) {
    EXPECT_EQ(shiftsIn(10000), Samples{});
    settings_.tempo = 240.0;
    EXPECT_EQ(shiftsIn(30000), Samples{22047});
    settings_.tempo = 120.0;
    EXPECT_EQ(shiftsIn(50000), (Samples{44122, 88273}));
}

TEST_F(ShiftSchedule, FollowsTheShiftIntervalAtOnce) {
    EXPECT_EQ(shiftsIn(30000), Samples{});
    settings_.shiftBeats = 1.0;
    EXPECT_EQ(shiftsIn(30000), Samples{44122});
}

TEST_F(ShiftSchedule, ShiftsAtEverySampleOfAPeriodOfZero) {
    settings_.shiftBeats = 0.0;
    EXPECT_EQ(shiftsIn(100), everySampleOf(100));
    settings_.shiftBeats = 2.0;
    settings_.tempo = std::numeric_limits<double>::infinity();
    rendered_ = 0;
    EXPECT_EQ(shiftsIn(100), everySampleOf(100));
}

TEST_F(ShiftSchedule, ShiftsAtEverySampleOfANegativePeriod) {
    settings_.tempo = -120.0;
    EXPECT_EQ(shiftsIn(100), everySampleOf(100));
}

TEST_F(ShiftSchedule, ShiftsAtEverySampleOfAPeriodThatIsNotANumber) {
    settings_.tempo = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(shiftsIn(100), everySampleOf(100));
    settings_.tempo = 0.0;
    settings_.shiftBeats = 0.0; // 0 / 0
    rendered_ = 0;
    EXPECT_EQ(shiftsIn(100), everySampleOf(100));
}

TEST_F(ShiftSchedule, NeverShiftsInAnInfinitePeriod) {
    settings_.tempo = 0.0;
    EXPECT_EQ(shiftsIn(100000), Samples{});
}

TEST_F(ShiftSchedule, ShiftsAtEverySampleOfAPeriodBelowOneSample) {
    settings_.shiftBeats = 1.0 / 32768.0; // 0.67 of a sample
    EXPECT_EQ(shiftsIn(1000), everySampleOf(1000));
}

TEST_F(ShiftSchedule, TakesReachingThePeriodForNotYetPassingIt) {
    // At 1024 samples a second the clock is exact: it meets every second, and never passes one.
    settings_.secondsPerSample = 1.0 / 1024.0;
    EXPECT_EQ(shiftsIn(5000), Samples{});
}

TEST_F(ShiftSchedule, RoundsThePeriodToFloat) {
    // The float nearest 1/3 of a beat, at 20 beats a minute, is 1.00000003 seconds, and as a float
    // 1 second: met, and not passed, by a clock of 1024 samples a second.
    settings_.shiftBeats = static_cast<double>(1.0F / 3.0F);
    settings_.tempo = 20.0;
    settings_.secondsPerSample = 1.0 / 1024.0;
    voice_.time = 0.9921875F;
    EXPECT_EQ(shiftsIn(20), Samples{});
}

TEST_F(ShiftSchedule, RoundsTheBeatsToFloat) {
    // 1 + 2^-24 beats round to 1, and three times that is 3 seconds; left as they were, they
    // would round up to the next float above 3 seconds, which a clock at 3 seconds passes.
    settings_.shiftBeats = 1.0 + 0x1p-24;
    settings_.tempo = 20.0;
    settings_.secondsPerSample = 1.0 / 1024.0;
    voice_.time = 2.9921875F;
    EXPECT_EQ(shiftsIn(20), Samples{});
}

TEST_F(ShiftSchedule, StopsWhenTheClockStandsStillAfter512Seconds) {
    // From there on a sample is less than half of the clock's last bit. It stands on a multiple
    // of the period, with no shift to come.
    voice_.time = 511.99F;
    shiftsIn(1000);
    EXPECT_EQ(voice_.time, 512.0F);
    EXPECT_EQ(shiftsIn(50000), Samples{});
    EXPECT_EQ(voice_.time, 512.0F);
}

} // namespace
} // namespace zelvatone
