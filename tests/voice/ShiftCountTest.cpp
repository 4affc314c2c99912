// How many modes each shift leaves.
#include "tests/voice/VoiceBench.h"

#include <vector>

namespace zelvatone {
namespace {

class ShiftCount : public VoiceBench {
protected:
    ShiftCount() {
        settings_.minModes = 2;
        settings_.maxModes = 20;
    }

    void start(std::int32_t modes) {
        settings_.initialModes = modes;
        voice_.start(50.0F);
    }

    // The target count after each of `shifts` shifts.
    std::vector<std::int32_t> counts(int shifts) {
        std::vector<std::int32_t> result;
        for (int n = 0; n < shifts; ++n) {
            tickWithShift();
            result.push_back(voice_.targetCount);
        }
        return result;
    }
};

using Counts = std::vector<std::int32_t>;

TEST_F(ShiftCount, StaysWithoutAModeShift) {
    start(10);
    EXPECT_EQ(counts(4), (Counts{10, 10, 10, 10}));
}

TEST_F(ShiftCount, GrowsByTheModeShiftUpToTheMaximum) {
    start(10);
    settings_.modeShift = 3;
    EXPECT_EQ(counts(5), (Counts{13, 16, 19, 20, 20}));
    EXPECT_EQ(voice_.activeCount, 20);
}

TEST_F(ShiftCount, ShrinksByTheModeShiftDownToTheMinimum) {
    start(10);
    settings_.modeShift = -3;
    EXPECT_EQ(counts(5), (Counts{7, 4, 2, 2, 2}));
}

TEST_F(ShiftCount, MovesIntoTheLimitsEvenWithoutAModeShift) {
    start(30);
    EXPECT_EQ(counts(2), (Counts{20, 20}));
    start(1);
    EXPECT_EQ(counts(2), (Counts{2, 2}));
}

TEST_F(ShiftCount, ObeysTheMaximumWhereItIsBelowTheMinimum) {
    settings_.minModes = 15;
    settings_.maxModes = 5;
    start(10);
    EXPECT_EQ(counts(2), (Counts{5, 5}));
    start(3);
    settings_.modeShift = 1;
    EXPECT_EQ(counts(2), (Counts{5, 5}));
}

TEST_F(ShiftCount, CountsFromTheSetAndNotFromTheModesStillSounding) {
    start(10);
    settings_.modeShift = -3;
    EXPECT_EQ(counts(1), Counts{7});
    EXPECT_EQ(voice_.activeCount, 10);
    EXPECT_EQ(counts(1), Counts{4});
}

TEST_F(ShiftCount, CanReachNoneAndComeBack) {
    settings_.minModes = 0;
    settings_.modeShift = -3;
    start(4);
    EXPECT_EQ(counts(2), (Counts{1, 0}));
    tick(66); // "Blend Time", and what the rounding of the steps may add
    EXPECT_EQ(voice_.activeCount, 0);
    EXPECT_EQ(voice_.tick(), 0.0F);
    settings_.modeShift = 2;
    EXPECT_EQ(counts(1), Counts{2});
    EXPECT_EQ(voice_.activeCount, 2);
}

TEST_F(ShiftCount, StaysBetweenNoneAndAHundredWhateverTheSettings) {
    settings_.modeShift = 3;
    settings_.minModes = 150;
    settings_.maxModes = 200;
    start(99);
    EXPECT_EQ(counts(2), (Counts{100, 100}));
    settings_.minModes = kLowestInt; // what NaN parameters read as
    settings_.maxModes = kLowestInt;
    EXPECT_EQ(counts(1), Counts{0});
    settings_.maxModes = 20;
    settings_.modeShift = kLowestInt;
    start(10);
    EXPECT_EQ(counts(1), Counts{0});
    settings_.minModes = -5;
    settings_.modeShift = -3;
    start(1);
    EXPECT_EQ(counts(1), Counts{0});
}

TEST_F(ShiftCount, LeavesAnUnchangedSetStandingStill) {
    start(10);
    const ModeArray amps = voice_.amp;
    const ModeArray freqs = voice_.freq;
    counts(3);
    EXPECT_EQ(voice_.amp, amps);
    EXPECT_EQ(voice_.freq, freqs);
    EXPECT_EQ(voice_.ampStep, ModeArray(100, 0.0F));
    EXPECT_EQ(voice_.freqStep, ModeArray(100, 0.0F));
}

TEST_F(ShiftCount, GlidesAnUnchangedCountToTargetsThatMoved) {
    start(3);
    settings_.jitterHz = 32.0F;
    counts(1);
    EXPECT_EQ(voice_.freqStep[0], 0.0F);
    EXPECT_EQ(voice_.freqStep[1], 0.5F); // 32 Hz in 64 samples
    EXPECT_EQ(voice_.freqStep[2], -0.5F);
    tick(64);
    EXPECT_EQ(voice_.freq[0], 50.0F);
    EXPECT_EQ(voice_.freq[1], 132.0F);
    EXPECT_EQ(voice_.freq[2], 118.0F);
}

} // namespace
} // namespace zelvatone
