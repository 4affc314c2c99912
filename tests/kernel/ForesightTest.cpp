// What a kernel expects of a bank decides which shortcuts it takes.
#include "kernel/Kernels.h"
#include "kernel/TestBank.h"

#include <limits>

using namespace zelvatone;

namespace {

class Foresight : public EachKernel {
protected:
    Outlook foresee() { return kernel().foresee(bank.view(), bank.motion, kRunSamples); }

    TestBank bank{20};
};

TEST_P(Foresight, SeesNothingMoveInABankOnItsTargets) {
    bank.amp[7] = bank.targetAmp[7] = 0.25F;
    bank.rest(7, 440.0F);
    bank.freqStep[7] = 3.0F; // left over: a mode on its target does not use it
    const Outlook outlook = foresee();
    EXPECT_TRUE(outlook.calm);
    EXPECT_FALSE(outlook.huge);
    EXPECT_FALSE(outlook.loudnessMoves);
    EXPECT_EQ(outlook.course, Course::kStill);
    EXPECT_EQ(outlook.wrap, Wrap::kNear);
}

TEST_P(Foresight, SeesAGlideInTheLastMode) {
    bank.targetAmp[19] = 0.5F;
    bank.ampStep[19] = 0.001F;
    bank.targetFreq[19] = 100.0F;
    bank.freqStep[19] = 0.01F;
    EXPECT_TRUE(foresee().loudnessMoves);
    EXPECT_EQ(foresee().course, Course::kGlide);
}

TEST_P(Foresight, LooksAtActiveModesOnly) {
    bank.targetAmp[20] = 0.5F;
    bank.ampStep[20] = 0.001F;
    bank.freq[20] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(foresee().loudnessMoves);
    EXPECT_TRUE(foresee().calm);
}

TEST_P(Foresight, TakesAStepTooSmallToCountForNone) {
    bank.amp[3] = 1.0F;
    bank.targetAmp[3] = 0.5F;
    bank.ampStep[3] = -1.0e-9F; // less than half of the last place of 1
    EXPECT_FALSE(foresee().loudnessMoves);
}

TEST_P(Foresight, TellsADropFromADropInMidGlide) {
    bank.rest(0, 440.0F);
    bank.drop(0.99F);
    EXPECT_EQ(foresee().course, Course::kDrop);
    bank.freqStep[0] = 1.0F; // the drop takes the mode off its target, and the step is alive
    EXPECT_EQ(foresee().course, Course::kGlideAndDrop);
}

TEST_P(Foresight, ExpectsEveryWrapWhereANegativePhaseOrFrequencyIsLeft) {
    bank.rest(0, 440.0F);
    bank.phase[0] = -1.0F;
    EXPECT_EQ(foresee().wrap, Wrap::kAny);
    bank.phase[0] = 1.0F;
    EXPECT_EQ(foresee().wrap, Wrap::kNear);
    bank.rest(1, -440.0F);
    EXPECT_EQ(foresee().wrap, Wrap::kAny);
}

TEST_P(Foresight, ExpectsWholeTurnsFromTheSampleRateUp) {
    bank.rest(0, 47000.0F);
    EXPECT_EQ(foresee().wrap, Wrap::kNear);
    bank.rest(0, 49000.0F);
    EXPECT_EQ(foresee().wrap, Wrap::kFar);
    // Two turns less a millionth: a rounded sum may lie on either side of the third.
    bank.rest(0, 95999.9F);
    EXPECT_EQ(foresee().wrap, Wrap::kAny);
}

TEST_P(Foresight, ExpectsAGlideToLeaveTheFirstTurn) {
    bank.freq[0] = 40000.0F;
    bank.targetFreq[0] = 60000.0F;
    bank.freqStep[0] = 10.0F;
    EXPECT_EQ(foresee().wrap, Wrap::kNear);
    bank.freqStep[0] = 100.0F;
    EXPECT_EQ(foresee().wrap, Wrap::kAny);
}

TEST_P(Foresight, LosesItsCalmOverAnythingThatIsNoSaneNumber) {
    for (ModeArray* array : {&bank.amp, &bank.freq, &bank.phase, &bank.ampStep, &bank.freqStep,
                             &bank.targetAmp, &bank.targetFreq}) {
        for (const float odd : {std::numeric_limits<float>::quiet_NaN(),
                                -std::numeric_limits<float>::infinity(), 1.0e10F}) {
            bank.amp[11] = 0.5F; // off its target, so that steps count
            bank.freq[11] = 1.0F;
            (*array)[11] = odd;
            EXPECT_FALSE(foresee().calm) << odd;
            (*array)[11] = 0.0F;
        }
    }
}

TEST_P(Foresight, WarnsOfPhasesBeyondTheReachOfVectors) {
    bank.rest(0, 1.0e6F);
    EXPECT_FALSE(foresee().huge);
    bank.rest(0, -2.0e8F);
    EXPECT_TRUE(foresee().huge);
    EXPECT_TRUE(foresee().calm);
}

ZELVATONE_FOR_EACH_KERNEL(Foresight);

} // namespace
