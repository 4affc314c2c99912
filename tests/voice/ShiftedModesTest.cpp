// What a shift does to the modes that enter, leave and stay. Falloff 0 makes the amplitudes of a
// set of n modes 1 / n each; "Blend Time" is 64 samples.
#include "tests/voice/VoiceBench.h"

namespace zelvatone {
namespace {

class ShiftedModes : public VoiceBench {
protected:
    ShiftedModes() { settings_.falloff = 0.0F; }

    void start(std::int32_t modes, float frequency = 128.0F) {
        settings_.initialModes = modes;
        voice_.start(frequency);
    }

    void shiftTo(std::int32_t modes) {
        settings_.minModes = modes;
        settings_.maxModes = modes;
        tickWithShift();
    }
};

// Entering

TEST_F(ShiftedModes, EnterSilentOnTheirTargetsWithoutExitPeel) {
    start(2);
    shiftTo(4);
    EXPECT_EQ(voice_.activeCount, 4);
    EXPECT_EQ(voice_.targetCount, 4);
    for (std::int32_t i = 2; i < 4; ++i) {
        EXPECT_EQ(voice_.amp[i], 0.0F);
        EXPECT_EQ(voice_.ampStep[i], 0.25F / 64.0F);
        EXPECT_EQ(voice_.freq[i], 128.0F * static_cast<float>(i + 1));
        EXPECT_EQ(voice_.freqStep[i], 0.0F);
    }
    tick(64);
    for (std::int32_t i = 0; i < 4; ++i) {
        EXPECT_EQ(voice_.amp[i], 0.25F);
        EXPECT_EQ(voice_.ampStep[i], 0.0F);
    }
}

TEST_F(ShiftedModes, FadeTheOthersBackWhileNewOnesEnter) {
    start(2);
    shiftTo(4);
    EXPECT_EQ(voice_.amp[0], 0.5F); // the shift sets steps; the first step is the next sample's
    EXPECT_EQ(voice_.ampStep[0], -0.25F / 64.0F);
    tick(32);
    EXPECT_EQ(voice_.amp[0], 0.375F);
    EXPECT_EQ(voice_.amp[3], 0.125F);
}

TEST_F(ShiftedModes, EnterFromTheFractionOfTheTargetThatExitPeelLeaves) {
    struct {
        float exitPeel;
        float from; // of a target of 256 Hz
    } const cases[] = {{0.25F, 192}, {1.0F, 0}, {2.0F, -256}, {-0.5F, 384}, {5.0F, -1024}};
    for (const auto& [exitPeel, from] : cases) {
        settings_.exitPeel = exitPeel;
        start(1);
        shiftTo(2);
        EXPECT_EQ(voice_.freq[1], from) << "Exit Peel " << exitPeel;
        EXPECT_EQ(voice_.targetFreq[1], 256.0F);
        EXPECT_EQ(voice_.freqStep[1], (256.0F - from) / 64.0F);
        EXPECT_EQ(voice_.freq[0], 128.0F);
        tick(64);
        EXPECT_EQ(voice_.freq[1], 256.0F);
    }
}

TEST_F(ShiftedModes, EnterByADoubleProductRoundedOnce) {
    // In float alone, 1 - 0.1 rounds first, and the product comes out one bit away.
    settings_.exitPeel = 0.1F;
    start(1, 101.0F);
    shiftTo(2);
    EXPECT_EQ(voice_.freq[1], static_cast<float>((1.0 - static_cast<double>(0.1F)) * 202.0));
    EXPECT_NE(voice_.freq[1], (1.0F - 0.1F) * 202.0F);
}

TEST_F(ShiftedModes, EnterWithThePhaseThatTheirPlaceHad) {
    start(1);
    voice_.phase[1] = 2.5F;
    settings_.exitPeel = 1.0F; // at 0 Hz the phase shows as it was
    shiftTo(2);
    EXPECT_EQ(voice_.phase[1], 2.5F);
}

TEST_F(ShiftedModes, EnterAgainWhenTheyWereTrimmedFromAnUnchangedCount) {
    settings_.parity = 1.0F; // the fourth mode is silent, and trimmed at the first sample
    start(4);
    voice_.tick();
    EXPECT_EQ(voice_.activeCount, 3);
    settings_.exitPeel = 0.5F;
    shiftTo(4);
    EXPECT_EQ(voice_.activeCount, 4);
    EXPECT_EQ(voice_.freq[3], 256.0F); // half of 512
    voice_.tick();
    EXPECT_EQ(voice_.activeCount, 3);
}

// Leaving

TEST_F(ShiftedModes, LeaveBySlidingAwayWhileTheyFade) {
    struct {
        float exitPeel;
        float to; // from 256 Hz
    } const cases[] = {{0.5F, 384}, {1.0F, 512}, {-0.5F, 128}, {-1.0F, 0}, {-3.0F, -512}};
    for (const auto& [exitPeel, to] : cases) {
        settings_.exitPeel = exitPeel;
        start(2);
        shiftTo(1);
        EXPECT_EQ(voice_.targetFreq[1], to) << "Exit Peel " << exitPeel;
        EXPECT_EQ(voice_.freqStep[1], (to - 256.0F) / 64.0F);
        EXPECT_EQ(voice_.targetAmp[1], 0.0F);
        EXPECT_EQ(voice_.ampStep[1], -0.5F / 64.0F);
        tick(63);
        EXPECT_EQ(voice_.activeCount, 2);
        EXPECT_EQ(voice_.amp[1], 0.5F / 64.0F);
        voice_.tick();
        EXPECT_EQ(voice_.activeCount, 1);
        EXPECT_EQ(voice_.freq[1], to);
    }
}

TEST_F(ShiftedModes, LeaveAtTheirOwnFrequencyWithoutExitPeel) {
    start(2);
    shiftTo(1);
    EXPECT_EQ(voice_.targetFreq[1], 256.0F);
    EXPECT_EQ(voice_.freqStep[1], 0.0F);
}

TEST_F(ShiftedModes, LeaveFromWhereTheyAreAndNotFromTheirTarget) {
    settings_.exitPeel = 0.5F;
    start(2);
    voice_.freq[1] = 64.0F; // still on its way somewhere, with no step
    shiftTo(1);
    EXPECT_EQ(voice_.targetFreq[1], 96.0F);
}

TEST_F(ShiftedModes, LeaveByADoubleProductRoundedOnce) {
    settings_.exitPeel = 0.3F;
    start(2, 102.0F);
    shiftTo(1);
    EXPECT_EQ(voice_.targetFreq[1], static_cast<float>((static_cast<double>(0.3F) + 1.0) * 204.0));
    EXPECT_NE(voice_.targetFreq[1], (0.3F + 1.0F) * 204.0F);
}

TEST_F(ShiftedModes, RaiseTheOthersWhileSomeLeave) {
    start(4);
    shiftTo(2);
    EXPECT_EQ(voice_.targetCount, 2);
    EXPECT_EQ(voice_.activeCount, 4);
    EXPECT_EQ(voice_.ampStep[0], 0.25F / 64.0F);
    EXPECT_EQ(voice_.ampStep[2], -0.25F / 64.0F);
    tick(64);
    EXPECT_EQ(voice_.activeCount, 2);
    EXPECT_EQ(voice_.amp[0], 0.5F);
    EXPECT_EQ(voice_.amp[1], 0.5F);
}

TEST_F(ShiftedModes, LeaveOverThePlaceOfOneThatWasTrimmedAlready) {
    settings_.parity = 1.0F;
    start(4);
    voice_.tick();
    ASSERT_EQ(voice_.activeCount, 3);
    settings_.exitPeel = 1.0F;
    shiftTo(2);
    EXPECT_EQ(voice_.targetFreq[3], 1024.0F);
    EXPECT_EQ(voice_.freqStep[3], 8.0F); // set for its place, though nothing sounds there
    EXPECT_EQ(voice_.activeCount, 3);
}

// Between the old count and the modes still sounding

TEST_F(ShiftedModes, TakeNewTargetsButKeepTheirStepsWhenTheyWereLeaving) {
    start(6);
    settings_.exitPeel = 1.0F;
    shiftTo(2); // modes 2..5 leave
    tick(16);
    const float ampStep = voice_.ampStep[2];
    const float freqStep = voice_.freqStep[2];
    EXPECT_LT(ampStep, 0.0F);
    EXPECT_EQ(freqStep, 6.0F); // 384 Hz up in 64 samples
    shiftTo(4);
    EXPECT_EQ(voice_.activeCount, 6);
    EXPECT_EQ(voice_.targetCount, 4);
    for (std::int32_t i = 2; i < 4; ++i) {
        EXPECT_EQ(voice_.targetAmp[i], 0.25F);
        EXPECT_EQ(voice_.targetFreq[i], 128.0F * static_cast<float>(i + 1));
        EXPECT_EQ(voice_.ampStep[i], ampStep);
    }
    EXPECT_EQ(voice_.freqStep[2], freqStep);
    // Modes 0 and 1 are on steps of this shift: from 1/6 + 17/64 of the way to 1/2, to 1/4.
    EXPECT_NEAR(voice_.ampStep[0], (0.25F - voice_.amp[0]) / 64.0F, 1e-9F);
    // Modes 4 and 5 go on leaving.
    EXPECT_EQ(voice_.targetAmp[4], 0.0F);
    EXPECT_EQ(voice_.ampStep[4], ampStep);
}

TEST_F(ShiftedModes, GoThroughZeroAndOnUntilTheNextShiftWithStepsTheyKept) {
    start(4);
    shiftTo(2);
    tick(32);
    shiftTo(4); // one more step down on the way, then modes 2 and 3 are aimed up again
    EXPECT_EQ(voice_.amp[2], 0.25F * 31.0F / 64.0F);
    tick(62);
    EXPECT_EQ(voice_.amp[2], -0.25F * 31.0F / 64.0F);
    EXPECT_EQ(voice_.activeCount, 4);
    shiftTo(4);
    EXPECT_EQ(voice_.amp[2], -0.125F);
    EXPECT_EQ(voice_.ampStep[2], 0.375F / 64.0F);
    tick(64);
    EXPECT_EQ(voice_.amp[2], 0.25F);
}

TEST_F(ShiftedModes, GoOnLeavingThroughAShiftOfTheSameCount) {
    start(4);
    shiftTo(2);
    tick(10);
    shiftTo(2);
    EXPECT_EQ(voice_.ampStep[3], -0.25F / 64.0F);
    EXPECT_EQ(voice_.targetAmp[3], 0.0F);
    EXPECT_EQ(voice_.activeCount, 4);
    tick(53); // 64 in all
    EXPECT_EQ(voice_.activeCount, 2);
}

TEST_F(ShiftedModes, EnterAboveTheOnesThatWereStillLeaving) {
    start(4);
    settings_.exitPeel = 0.5F;
    shiftTo(2);
    tick(15); // mode 2 is at 384 Hz + 15 of 64 steps of 192 Hz, and moves once more
    shiftTo(6);
    EXPECT_EQ(voice_.activeCount, 6);
    EXPECT_EQ(voice_.freq[2], 384.0F + 16.0F * 3.0F); // not restarted
    EXPECT_EQ(voice_.freq[4], 320.0F);                // half of 640
    EXPECT_EQ(voice_.freqStep[2], -48.0F / 64.0F);    // on a new step: every mode has one
}

} // namespace
} // namespace zelvatone
