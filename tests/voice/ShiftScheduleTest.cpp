// When the modes shift: the float clock of the note against the "Shift Interval".
//
// Samples count from 0, so "at sample n" means that n samples of the note were rendered before.
// The expected samples are those of a clock that a Python script ran: doubles rounded to float
// through its struct module, r = fmod(clock, period), a shift where r + 1 / rate > period.
#include "VoiceBench.h"

#include <numeric>
#include <vector>

namespace zelvatone {
namespace {

class ShiftSchedule : public VoiceBench {
protected:
    ShiftSchedule() {
        settings.secondsPerSample = 1.0 / 44100.0;
        settings.shiftBeats = 2.0;
        settings.modeShift = 1;
    }

    // Renders `samples` samples and answers at which of them the voice shifted: each shift raises
    // the count from 0 to 1, and the bench puts it back.
    std::vector<int> shiftsIn(int samples) {
        std::vector<int> shifts;
        for (int n = 0; n < samples; ++n, ++rendered) {
            voice.targetCount = 0;
            voice.activeCount = 0;
            voice.tick();
            if (voice.targetCount != 0) {
                shifts.push_back(rendered);
            }
        }
        return shifts;
    }

    static std::vector<int> everySampleOf(int samples) {
        std::vector<int> all(static_cast<std::size_t>(samples));
        std::iota(all.begin(), all.end(), 0);
        return all;
    }

    int rendered = 0;
};

using Samples = std::vector<int>;

TEST_F(ShiftSchedule, OfTwoBeatsAt120ShiftsFirstAtSample44122) {
    EXPECT_EQ(shiftsIn(180000), (Samples{44122, 88273, 132424, 176574}));
}

TEST_F(ShiftSchedule, FollowsTheClockOfTheSampleRate) {
    settings.secondsPerSample = 1.0 / 48000.0;
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
    settings.shiftBeats = 0.25;
    EXPECT_EQ(shiftsIn(100000), expected);
    EXPECT_EQ(expected.size(), 18U);
}

TEST_F(ShiftSchedule, BeginsAnewWithEachNote) {
    EXPECT_EQ(shiftsIn(50000), Samples{44122});
    voice.start(100.0F);
    rendered = 0;
    EXPECT_EQ(shiftsIn(50000), Samples{44122});
}

TEST_F(ShiftSchedule, IsFasterAtAFasterTempo) {
    settings.tempo = 240.0;
    EXPECT_EQ(shiftsIn(90000), (Samples{22047, 44122, 66198, 88273}));
    voice.start(100.0F);
    rendered = 0;
    settings.tempo = 140.0; // 0.857 seconds, which no float is exactly
    EXPECT_EQ(shiftsIn(90000), (Samples{37815, 75659}));
}

TEST_F(ShiftSchedule, FollowsTheTempoAtOnceAndKeepsTheNotesClock) {
    EXPECT_EQ(shiftsIn(10000), Samples{});
    settings.tempo = 240.0;
    EXPECT_EQ(shiftsIn(30000), Samples{22047});
    settings.tempo = 120.0;
    EXPECT_EQ(shiftsIn(50000), (Samples{44122, 88273}));
}

TEST_F(ShiftSchedule, FollowsTheShiftIntervalAtOnce) {
    EXPECT_EQ(shiftsIn(30000), Samples{});
    settings.shiftBeats = 1.0;
    EXPECT_EQ(shiftsIn(30000), Samples{44122});
}

TEST_F(ShiftSchedule, WithAPeriodOfZeroShiftsAtEverySample) {
    settings.shiftBeats = 0.0;
    EXPECT_EQ(shiftsIn(100), everySampleOf(100));
    settings.shiftBeats = 2.0;
    settings.tempo = std::numeric_limits<double>::infinity();
    rendered = 0;
    EXPECT_EQ(shiftsIn(100), everySampleOf(100));
}

TEST_F(ShiftSchedule, WithANegativePeriodShiftsAtEverySample) {
    settings.tempo = -120.0;
    EXPECT_EQ(shiftsIn(100), everySampleOf(100));
}

TEST_F(ShiftSchedule, WithAPeriodThatIsNoNumberShiftsAtEverySample) {
    settings.tempo = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(shiftsIn(100), everySampleOf(100));
    settings.tempo = 0.0;
    settings.shiftBeats = 0.0; // 0 / 0
    rendered = 0;
    EXPECT_EQ(shiftsIn(100), everySampleOf(100));
}

TEST_F(ShiftSchedule, WithAnInfinitePeriodNeverShifts) {
    settings.tempo = 0.0;
    EXPECT_EQ(shiftsIn(100000), Samples{});
}

TEST_F(ShiftSchedule, WithAPeriodBelowOneSampleShiftsAtEverySample) {
    settings.shiftBeats = 1.0 / 32768.0; // 0.67 of a sample
    EXPECT_EQ(shiftsIn(1000), everySampleOf(1000));
}

TEST_F(ShiftSchedule, TakesReachingThePeriodForNotYetPassingIt) {
    // At 1024 samples a second the clock is exact: it meets every second, and never passes one.
    settings.secondsPerSample = 1.0 / 1024.0;
    EXPECT_EQ(shiftsIn(5000), Samples{});
}

TEST_F(ShiftSchedule, RoundsThePeriodToFloat) {
    // The float nearest 1/3 of a beat, at 20 beats a minute, is 1.00000003 seconds, and as a float
    // 1 second: met, and not passed, by a clock of 1024 samples a second.
    settings.shiftBeats = static_cast<double>(1.0F / 3.0F);
    settings.tempo = 20.0;
    settings.secondsPerSample = 1.0 / 1024.0;
    voice.time = 0.9921875F;
    EXPECT_EQ(shiftsIn(20), Samples{});
}

TEST_F(ShiftSchedule, RoundsTheBeatsToFloat) {
    // 1 + 2^-24 beats round to 1, and three times that is 3 seconds; left as they were, they
    // would round up to the next float above 3 seconds, which a clock at 3 seconds passes.
    settings.shiftBeats = 1.0 + 0x1p-24;
    settings.tempo = 20.0;
    settings.secondsPerSample = 1.0 / 1024.0;
    voice.time = 2.9921875F;
    EXPECT_EQ(shiftsIn(20), Samples{});
}

TEST_F(ShiftSchedule, StopsWhenTheClockStandsStillAfter512Seconds) {
    // From there on a sample is less than half of the clock's last bit. It stands on a multiple
    // of the period, with no shift to come.
    voice.time = 511.99F;
    shiftsIn(1000);
    EXPECT_EQ(voice.time, 512.0F);
    EXPECT_EQ(shiftsIn(50000), Samples{});
    EXPECT_EQ(voice.time, 512.0F);
}

} // namespace
} // namespace zelvatone
