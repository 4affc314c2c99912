// What a kernel expects of a bank decides which shortcuts it takes.
#include "tests/kernel/Kernels.h"
#include "tests/kernel/TestBank.h"

#include <limits>

using namespace zelvatone;

namespace {

class BankAnalysis : public EachKernel {
protected:
    BankTraits analyse() { return kernel().analyse(bank_.view(), bank_.constants, kRunSamples); }

    TestBank bank_{20};
};

TEST_P(BankAnalysis, SeesNothingMoveInABankOnItsTargets) {
    bank_.amp[7] = bank_.targetAmp[7] = 0.25F;
    bank_.rest(7, 440.0F);
    bank_.freqStep[7] = 3.0F; // left over: a mode on its target does not use it
    const BankTraits traits = analyse();
    EXPECT_TRUE(traits.inFastRange);
    EXPECT_FALSE(traits.phaseTooFast);
    EXPECT_FALSE(traits.loudnessMoves);
    EXPECT_EQ(traits.motion, FrequencyMotion::kStill);
    EXPECT_EQ(traits.wrap, Wrap::kNear);
}

TEST_P(BankAnalysis, SeesAGlideInTheLastMode) {
    bank_.targetAmp[19] = 0.5F;
    bank_.ampStep[19] = 0.001F;
    bank_.targetFreq[19] = 100.0F;
    bank_.freqStep[19] = 0.01F;
    EXPECT_TRUE(analyse().loudnessMoves);
    EXPECT_EQ(analyse().motion, FrequencyMotion::kGlide);
}

TEST_P(BankAnalysis, LooksAtActiveModesOnly) {
    bank_.targetAmp[20] = 0.5F;
    bank_.ampStep[20] = 0.001F;
    bank_.freq[20] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(analyse().loudnessMoves);
    EXPECT_TRUE(analyse().inFastRange);
}

TEST_P(BankAnalysis, TakesAStepTooSmallToCountForNone) {
    bank_.amp[3] = 1.0F;
    bank_.targetAmp[3] = 0.5F;
    bank_.ampStep[3] = -1.0e-9F; // less than half of the last place of 1
    EXPECT_FALSE(analyse().loudnessMoves);
}

TEST_P(BankAnalysis, TellsADropFromADropInMidGlide) {
    bank_.rest(0, 440.0F);
    bank_.drop(0.99F);
    EXPECT_EQ(analyse().motion, FrequencyMotion::kDrop);
    bank_.freqStep[0] = 1.0F; // the drop takes the mode off its target, and the step is alive
    EXPECT_EQ(analyse().motion, FrequencyMotion::kGlideAndDrop);
}

TEST_P(BankAnalysis, ExpectsEveryWrapWhereANegativePhaseOrFrequencyIsLeft) {
    bank_.rest(0, 440.0F);
    bank_.phase[0] = -1.0F;
    EXPECT_EQ(analyse().wrap, Wrap::kAny);
    bank_.phase[0] = 1.0F;
    EXPECT_EQ(analyse().wrap, Wrap::kNear);
    bank_.rest(1, -440.0F);
    EXPECT_EQ(analyse().wrap, Wrap::kAny);
}

TEST_P(BankAnalysis, ExpectsWholeTurnsFromTheSampleRateUp) {
    bank_.rest(0, 47000.0F);
    EXPECT_EQ(analyse().wrap, Wrap::kNear);
    bank_.rest(0, 49000.0F);
    EXPECT_EQ(analyse().wrap, Wrap::kFar);
    // Two turns less a millionth: a rounded sum may lie on either side of the third.
    bank_.rest(0, 95999.9F);
    EXPECT_EQ(analyse().wrap, Wrap::kAny);
}

TEST_P(BankAnalysis, ExpectsAGlideToLeaveTheFirstTurn) {
    bank_.freq[0] = 40000.0F;
    bank_.targetFreq[0] = 60000.0F;
    bank_.freqStep[0] = 10.0F;
    EXPECT_EQ(analyse().wrap, Wrap::kNear);
    bank_.freqStep[0] = 100.0F;
    EXPECT_EQ(analyse().wrap, Wrap::kAny);
}

TEST_P(BankAnalysis, FindsAnythingOutsideTheInputRange) {
    for (ModeArray* array : {&bank_.amp, &bank_.freq, &bank_.phase, &bank_.ampStep, &bank_.freqStep,
                             &bank_.targetAmp, &bank_.targetFreq}) {
        for (const float odd : {std::numeric_limits<float>::quiet_NaN(),
                                -std::numeric_limits<float>::infinity(), 1.0e10F}) {
            bank_.amp[11] = 0.5F; // off its target, so that steps count
            bank_.freq[11] = 1.0F;
            (*array)[11] = odd;
            EXPECT_FALSE(analyse().inFastRange) << odd;
            (*array)[11] = 0.0F;
        }
    }
}

TEST_P(BankAnalysis, FindsPhasesTooFastForVectors) {
    bank_.rest(0, 1.0e6F);
    EXPECT_FALSE(analyse().phaseTooFast);
    bank_.rest(0, -2.0e8F);
    EXPECT_TRUE(analyse().phaseTooFast);
    EXPECT_TRUE(analyse().inFastRange);
}

ZELVATONE_FOR_EACH_KERNEL(BankAnalysis);

} // namespace
