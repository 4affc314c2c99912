// What a kernel expects of a bank decides which shortcuts it takes.
#include "kernel/Kernels.h"
#include "kernel/TestBank.h"

#include <limits>

using namespace zelvatone;

namespace {

class BankAnalysis : public EachKernel {
protected:
    BankTraits analyse() { return kernel().analyse(bank.view(), bank.constants, kRunSamples); }

    TestBank bank{20};
};

TEST_P(BankAnalysis, SeesNothingMoveInABankOnItsTargets) {
    bank.amp[7] = bank.targetAmp[7] = 0.25F;
    bank.rest(7, 440.0F);
    bank.freqStep[7] = 3.0F; // left over: a mode on its target does not use it
    const BankTraits traits = analyse();
    EXPECT_TRUE(traits.inFastRange);
    EXPECT_FALSE(traits.phaseTooFast);
    EXPECT_FALSE(traits.loudnessMoves);
    EXPECT_EQ(traits.motion, FrequencyMotion::kStill);
    EXPECT_EQ(traits.wrap, Wrap::kNear);
}

TEST_P(BankAnalysis, SeesAGlideInTheLastMode) {
    bank.targetAmp[19] = 0.5F;
    bank.ampStep[19] = 0.001F;
    bank.targetFreq[19] = 100.0F;
    bank.freqStep[19] = 0.01F;
    EXPECT_TRUE(analyse().loudnessMoves);
    EXPECT_EQ(analyse().motion, FrequencyMotion::kGlide);
}

TEST_P(BankAnalysis, LooksAtActiveModesOnly) {
    bank.targetAmp[20] = 0.5F;
    bank.ampStep[20] = 0.001F;
    bank.freq[20] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(analyse().loudnessMoves);
    EXPECT_TRUE(analyse().inFastRange);
}

TEST_P(BankAnalysis, TakesAStepTooSmallToCountForNone) {
    bank.amp[3] = 1.0F;
    bank.targetAmp[3] = 0.5F;
    bank.ampStep[3] = -1.0e-9F; // less than half of the last place of 1
    EXPECT_FALSE(analyse().loudnessMoves);
}

TEST_P(BankAnalysis, TellsADropFromADropInMidGlide) {
    bank.rest(0, 440.0F);
    bank.drop(0.99F);
    EXPECT_EQ(analyse().motion, FrequencyMotion::kDrop);
    bank.freqStep[0] = 1.0F; // the drop takes the mode off its target, and the step is alive
    EXPECT_EQ(analyse().motion, FrequencyMotion::kGlideAndDrop);
}

TEST_P(BankAnalysis, ExpectsEveryWrapWhereANegativePhaseOrFrequencyIsLeft) {
    bank.rest(0, 440.0F);
    bank.phase[0] = -1.0F;
    EXPECT_EQ(analyse().wrap, Wrap::kAny);
    bank.phase[0] = 1.0F;
    EXPECT_EQ(analyse().wrap, Wrap::kNear);
    bank.rest(1, -440.0F);
    EXPECT_EQ(analyse().wrap, Wrap::kAny);
}

TEST_P(BankAnalysis, ExpectsWholeTurnsFromTheSampleRateUp) {
    bank.rest(0, 47000.0F);
    EXPECT_EQ(analyse().wrap, Wrap::kNear);
    bank.rest(0, 49000.0F);
    EXPECT_EQ(analyse().wrap, Wrap::kFar);
    // Two turns less a millionth: a rounded sum may lie on either side of the third.
    bank.rest(0, 95999.9F);
    EXPECT_EQ(analyse().wrap, Wrap::kAny);
}

TEST_P(BankAnalysis, ExpectsAGlideToLeaveTheFirstTurn) {
    bank.freq[0] = 40000.0F;
    bank.targetFreq[0] = 60000.0F;
    bank.freqStep[0] = 10.0F;
    EXPECT_EQ(analyse().wrap, Wrap::kNear);
    bank.freqStep[0] = 100.0F;
    EXPECT_EQ(analyse().wrap, Wrap::kAny);
}

TEST_P(BankAnalysis, FindsAnythingOutsideTheInputRange) {
    for (ModeArray* array : {&bank.amp, &bank.freq, &bank.phase, &bank.ampStep, &bank.freqStep,
                             &bank.targetAmp, &bank.targetFreq}) {
        for (const float odd : {std::numeric_limits<float>::quiet_NaN(),
                                -std::numeric_limits<float>::infinity(), 1.0e10F}) {
            bank.amp[11] = 0.5F; // off its target, so that steps count
            bank.freq[11] = 1.0F;
            (*array)[11] = odd;
            EXPECT_FALSE(analyse().inFastRange) << odd;
            (*array)[11] = 0.0F;
        }
    }
}

TEST_P(BankAnalysis, WarnsOfPhasesBeyondTheReachOfVectors) {
    bank.rest(0, 1.0e6F);
    EXPECT_FALSE(analyse().phaseTooFast);
    bank.rest(0, -2.0e8F);
    EXPECT_TRUE(analyse().phaseTooFast);
    EXPECT_TRUE(analyse().inFastRange);
}

ZELVATONE_FOR_EACH_KERNEL(BankAnalysis);

} // namespace
