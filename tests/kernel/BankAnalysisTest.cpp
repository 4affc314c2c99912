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
    EXPECT_FALSE(traits.loudnessMoves);
    EXPECT_EQ(traits.motion, FrequencyMotion::kStill);
    EXPECT_EQ(traits.wrap, Wrap::kNear);
}

TEST_P(BankAnalysis, SeesAGlideInTheLastMode) {
    bank_.targetAmp[19] = 0.5F;
    bank_.ampStep[19] = 0.001F;
    bank_.targetFreq[19] = 100.0F;
    bank_.freqStep[19] = 2.0F;
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
    EXPECT_EQ(analyse().motion, FrequencyMotion::kUnderway);
    bank_.freqStep[0] = 1.0F; // the drop takes the mode off its target, and the step is alive
    EXPECT_EQ(analyse().motion, FrequencyMotion::kGlideAndDrop);
}

TEST_P(BankAnalysis, ExpectsNoArrivalFromAGlideThatIsFarFromItsTarget) {
    bank_.freq[5] = 100.0F;
    bank_.targetFreq[5] = 200.0F;
    bank_.freqStep[5] = 1.5F; // 64 samples: 96 Hz
    EXPECT_EQ(analyse().motion, FrequencyMotion::kUnderway);
    bank_.freqStep[5] = 1.6F; // 102.4 Hz
    EXPECT_EQ(analyse().motion, FrequencyMotion::kGlide);
}

TEST_P(BankAnalysis, CountsWhatTheDropAddsToAGlide) {
    bank_.freq[5] = 100.0F;
    bank_.targetFreq[5] = 200.0F;
    bank_.freqStep[5] = 0.1F;
    bank_.drop(1.005F); // 37.6 Hz in 64 samples, and 8.8 Hz by the steps
    EXPECT_EQ(analyse().motion, FrequencyMotion::kUnderway);
    bank_.drop(1.011F); // 101.4 Hz
    EXPECT_EQ(analyse().motion, FrequencyMotion::kGlideAndDrop);
}

TEST_P(BankAnalysis, ExpectsEveryWrapWhereANegativePhaseIsLeft) {
    bank_.rest(0, 440.0F);
    bank_.phase[0] = -1.0F;
    EXPECT_EQ(analyse().wrap, Wrap::kAny);
    bank_.phase[0] = 1.0F;
    EXPECT_EQ(analyse().wrap, Wrap::kNear);
}

TEST_P(BankAnalysis, ExpectsTurnsEitherWayFromANegativeFrequency) {
    bank_.rest(1, -440.0F);
    EXPECT_EQ(analyse().wrap, Wrap::kEither);
    bank_.rest(1, -49000.0F);
    EXPECT_EQ(analyse().wrap, Wrap::kAny);
}

TEST_P(BankAnalysis, ExpectsTheDropToRaiseFrequenciesInEitherDirection) {
    for (const float direction : {1.0F, -1.0F}) {
        bank_.rest(0, direction * 30000.0F);
        bank_.drop(1.005F); // up to 41,300 Hz
        EXPECT_EQ(analyse().wrap, direction > 0.0F ? Wrap::kNear : Wrap::kEither);
        bank_.drop(1.01F); // up to 56,700 Hz
        EXPECT_EQ(analyse().wrap, Wrap::kAny);
    }
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

TEST_P(BankAnalysis, FindsAmplitudesOutsideTheInputRange) {
    for (ModeArray* array : {&bank_.amp, &bank_.ampStep, &bank_.targetAmp}) {
        for (const float odd : {std::numeric_limits<float>::quiet_NaN(),
                                -std::numeric_limits<float>::infinity(), 1.0e10F}) {
            bank_.amp[11] = 0.5F; // off its target, so that steps count
            (*array)[11] = odd;
            EXPECT_FALSE(analyse().inFastRange) << odd;
            (*array)[11] = 0.0F;
        }
    }
}

TEST_P(BankAnalysis, FindsFrequenciesAndPhasesThatOnlyTheExactWrapTakes) {
    for (ModeArray* array : {&bank_.freq, &bank_.phase, &bank_.freqStep, &bank_.targetFreq}) {
        for (const float odd : {std::numeric_limits<float>::quiet_NaN(),
                                -std::numeric_limits<float>::infinity(), 1.0e10F}) {
            bank_.rest(11, 1.0F);
            bank_.targetFreq[11] = 2.0F; // steps count
            bank_.freqStep[11] = 0.001F;
            bank_.phase[11] = 0.0F;
            (*array)[11] = odd;
            EXPECT_EQ(analyse().wrap, Wrap::kExact) << odd;
            EXPECT_TRUE(analyse().inFastRange);
        }
    }
}

TEST_P(BankAnalysis, TakesTheExactWrapFromThousandsOfTurnsASampleOn) {
    bank_.rest(0, 1.0e6F);
    EXPECT_EQ(analyse().wrap, Wrap::kFar);
    bank_.rest(0, -1.0e6F);
    EXPECT_EQ(analyse().wrap, Wrap::kAny);
    bank_.rest(0, -2.0e8F);
    EXPECT_EQ(analyse().wrap, Wrap::kExact);
}

TEST_P(BankAnalysis, TakesTheExactWrapWhereNoEntryIsInUse) {
    bank_.rest(0, 440.0F);
    bank_.constants.indexLimit = 0.0F;
    EXPECT_EQ(analyse().wrap, Wrap::kExact);
}

ZELVATONE_FOR_EACH_KERNEL(BankAnalysis);

} // namespace
