// How a mode moves from where it is to its target.
#include "tests/voice/VoiceBench.h"

namespace zelvatone {
namespace {

// One mode that sounds throughout, so that nothing is trimmed, with its amplitude to move.
class Glide : public VoiceBench {
protected:
    void glideAmp(float from, float to, float step) {
        place(0, from, 100.0F);
        voice_.targetAmp[0] = to;
        voice_.ampStep[0] = step;
    }

    void glideFreq(float from, float to, float step) {
        place(0, 0.5F, from);
        voice_.targetFreq[0] = to;
        voice_.freqStep[0] = step;
    }
};

TEST_F(Glide, AddsOneStepASample) {
    glideAmp(0.25F, 1.0F, 0.0625F);
    for (int n = 1; n <= 11; ++n) {
        voice_.tick();
        EXPECT_EQ(voice_.amp[0], 0.25F + 0.0625F * static_cast<float>(n));
        EXPECT_EQ(voice_.ampStep[0], 0.0625F);
    }
}

TEST_F(Glide, EndsOnTheTargetWithoutAStep) {
    glideAmp(0.25F, 1.0F, 0.0625F);
    tick(12);
    EXPECT_EQ(voice_.amp[0], 1.0F);
    EXPECT_EQ(voice_.ampStep[0], 0.0F);
    tick(5);
    EXPECT_EQ(voice_.amp[0], 1.0F);
}

TEST_F(Glide, SnapsOntoATargetThatAStepWouldPass) {
    glideAmp(0.25F, 0.5F, 0.75F);
    voice_.tick();
    EXPECT_EQ(voice_.amp[0], 0.5F);
    EXPECT_EQ(voice_.ampStep[0], 0.0F);
    glideAmp(0.75F, 0.5F, -0.5F);
    voice_.tick();
    EXPECT_EQ(voice_.amp[0], 0.5F);
    EXPECT_EQ(voice_.ampStep[0], 0.0F);
}

TEST_F(Glide, MovesFrequenciesLikeAmplitudes) {
    glideFreq(100.0F, 90.0F, -4.0F);
    voice_.tick();
    EXPECT_EQ(voice_.freq[0], 96.0F);
    voice_.tick();
    EXPECT_EQ(voice_.freq[0], 92.0F);
    voice_.tick();
    EXPECT_EQ(voice_.freq[0], 90.0F);
    EXPECT_EQ(voice_.freqStep[0], 0.0F);
    EXPECT_EQ(voice_.amp[0], 0.5F);
}

TEST_F(Glide, PassesThroughZero) {
    glideFreq(2.0F, -3.0F, -1.0F);
    tick(3);
    EXPECT_EQ(voice_.freq[0], -1.0F);
    tick(2);
    EXPECT_EQ(voice_.freq[0], -3.0F);
    EXPECT_EQ(voice_.freqStep[0], 0.0F);
}

TEST_F(Glide, MovesTheTwoValuesOfAModeIndependently) {
    place(0, 0.25F, 100.0F);
    aim(0, 0.5F, 108.0F);
    voice_.ampStep[0] = 0.125F;
    voice_.freqStep[0] = 2.0F;
    tick(2);
    EXPECT_EQ(voice_.ampStep[0], 0.0F);
    EXPECT_EQ(voice_.freqStep[0], 2.0F);
    tick(2);
    EXPECT_EQ(voice_.freq[0], 108.0F);
    EXPECT_EQ(voice_.freqStep[0], 0.0F);
}

TEST_F(Glide, KeepsGoingByAStepThatPointsAway) {
    glideAmp(0.5F, 0.25F, 0.125F);
    tick(20);
    EXPECT_EQ(voice_.amp[0], 3.0F);
    EXPECT_EQ(voice_.ampStep[0], 0.125F);
    glideFreq(100.0F, 101.0F, -10.0F);
    tick(20);
    EXPECT_EQ(voice_.freq[0], -100.0F);
    EXPECT_EQ(voice_.freqStep[0], -10.0F);
}

TEST_F(Glide, ComesBackAtTheNextShiftFromWhereItWentAway) {
    settings_.initialModes = 1;
    voice_.start(100.0F);
    voice_.freq[0] = 90.0F;
    voice_.freqStep[0] = -1.0F;
    tick(6);
    EXPECT_EQ(voice_.freq[0], 84.0F);
    tickWithShift(); // one more step away, and then the new step
    EXPECT_EQ(voice_.freq[0], 83.0F);
    EXPECT_EQ(voice_.freqStep[0], 17.0F / 64.0F);
    tick(64);
    EXPECT_EQ(voice_.freq[0], 100.0F);
}

TEST_F(Glide, NeverArrivesWithoutAStep) {
    glideFreq(100.0F, 101.0F, 0.0F);
    tick(100);
    EXPECT_EQ(voice_.freq[0], 100.0F);
}

TEST_F(Glide, IgnoresALeftOverStepOnTheTarget) {
    glideFreq(100.0F, 100.0F, 3.0F);
    tick(10);
    EXPECT_EQ(voice_.freq[0], 100.0F);
    EXPECT_EQ(voice_.freqStep[0], 3.0F);
}

TEST_F(Glide, TreatsBothZerosAsOneValue) {
    place(0, 1.0F, -0.0F);
    voice_.targetFreq[0] = 0.0F;
    voice_.freqStep[0] = 3.0F;
    voice_.tick();
    EXPECT_EQ(bitsOf(voice_.freq[0]), bitsOf(-0.0F));
}

TEST_F(Glide, GoesOnAddingStepsTowardsATargetThatIsNotANumber) {
    glideFreq(100.0F, kNaN, 2.0F);
    tick(10);
    EXPECT_EQ(voice_.freq[0], 120.0F);
    EXPECT_EQ(voice_.freqStep[0], 2.0F);
}

TEST_F(Glide, NeverArrivesFromAValueThatIsNotANumber) {
    glideAmp(kNaN, 0.5F, 0.25F);
    tick(10);
    EXPECT_TRUE(std::isnan(voice_.amp[0]));
    EXPECT_EQ(voice_.ampStep[0], 0.25F);
}

TEST_F(Glide, SnapsFromAboveAndIsLostFromBelowByAStepThatIsNotANumber) {
    // From above, the target was below and is not any more. From below, nothing has changed.
    glideFreq(100.0F, 90.0F, kNaN);
    voice_.tick();
    EXPECT_EQ(voice_.freq[0], 90.0F);
    EXPECT_EQ(voice_.freqStep[0], 0.0F);
    glideFreq(80.0F, 90.0F, kNaN);
    voice_.tick();
    EXPECT_TRUE(std::isnan(voice_.freq[0]));
}

TEST_F(Glide, SnapsAtOnceByAnInfiniteStep) {
    glideFreq(80.0F, 90.0F, kInfinity); // what a "Blend Time" of 0 makes
    voice_.tick();
    EXPECT_EQ(voice_.freq[0], 90.0F);
    EXPECT_EQ(voice_.freqStep[0], 0.0F);
}

TEST_F(Glide, RoundsEverySumToFloat) {
    glideFreq(16777216.0F, 16777300.0F, 1.0F); // 2^24 + 1 is no float: the mode is stuck
    tick(100);
    EXPECT_EQ(voice_.freq[0], 16777216.0F);
}

TEST_F(Glide, MovesActiveModesOnly) {
    place(0, 0.5F, 100.0F);
    place(1, 0.5F, 100.0F);
    aim(1, 1.0F, 200.0F);
    voice_.ampStep[1] = 0.125F;
    voice_.freqStep[1] = 1.0F;
    voice_.activeCount = 1;
    tick(4);
    EXPECT_EQ(voice_.amp[1], 0.5F);
    EXPECT_EQ(voice_.freq[1], 100.0F);
}

TEST_F(Glide, TakesBlendTimeInSamples) {
    settings_.secondsPerSample = 1.0 / 44100.0;
    settings_.blendSeconds = static_cast<double>(0.01F);
    settings_.initialModes = 1;
    voice_.start(441.0F);
    voice_.freq[0] = 0.0F;
    tickWithShift();
    // 441 Hz in 441 samples. The float 0.01 is 2e-8 of itself below; 441 samples round that off.
    EXPECT_EQ(voice_.freqStep[0], 1.0F);
    for (int n = 1; n <= 441; ++n) {
        EXPECT_EQ(voice_.freq[0], static_cast<float>(n - 1));
        voice_.tick();
    }
    EXPECT_EQ(voice_.freq[0], 441.0F);
    EXPECT_EQ(voice_.freqStep[0], 0.0F);
}

TEST_F(Glide, BringsAllModesHomeTogether) {
    settings_.initialModes = 3;
    settings_.falloff = 0.0F;
    voice_.start(64.0F);
    voice_.freq[0] = 0.0F;
    voice_.freq[1] = 256.0F;
    voice_.freq[2] = 384.0F;
    tickWithShift();
    tick(63);
    for (std::int32_t i = 0; i < 3; ++i) {
        EXPECT_NE(voice_.freqStep[i], 0.0F);
    }
    voice_.tick();
    for (std::int32_t i = 0; i < 3; ++i) {
        EXPECT_EQ(voice_.freq[i], 64.0F * static_cast<float>(i + 1));
        EXPECT_EQ(voice_.freqStep[i], 0.0F);
    }
}

} // namespace
} // namespace zelvatone
