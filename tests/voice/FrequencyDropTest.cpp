// "Freq Drop": frequencies that run away sample by sample, and "Drop Mod", which selects the modes.
#include "tests/voice/VoiceBench.h"

#include <vector>

namespace zelvatone {
namespace {

class FrequencyDrop : public VoiceBench {
protected:
    FrequencyDrop() { settings_.dropFactor = 0.5F; }

    void placeModes(std::int32_t count) {
        for (std::int32_t i = 0; i < count; ++i) {
            place(i, 0.125F, 64.0F);
        }
    }

    // The modes whose frequency one sample halves.
    std::vector<int> droppedOf(std::int32_t count) {
        placeModes(count);
        voice_.tick();
        std::vector<int> result;
        for (std::int32_t i = 0; i < count; ++i) {
            if (voice_.freq[i] == 32.0F) {
                result.push_back(i);
            } else {
                EXPECT_EQ(voice_.freq[i], 64.0F);
            }
        }
        return result;
    }
};

using Modes = std::vector<int>;

TEST_F(FrequencyDrop, TakesEveryModeWithDropModOne) {
    settings_.dropModulus = 1;
    EXPECT_EQ(droppedOf(7), (Modes{0, 1, 2, 3, 4, 5, 6}));
}

TEST_F(FrequencyDrop, TakesEveryModeBelowDropModOne) {
    for (const std::int32_t modulus : {0, -1, -2, kLowestInt}) {
        settings_.dropModulus = modulus;
        EXPECT_EQ(droppedOf(3), (Modes{0, 1, 2}));
    }
}

TEST_F(FrequencyDrop, TakesEverySecondModeFromTheSecondWithDropModTwo) {
    settings_.dropModulus = 2;
    EXPECT_EQ(droppedOf(7), (Modes{1, 3, 5}));
}

TEST_F(FrequencyDrop, TakesEveryThirdModeFromTheSecondWithDropModThree) {
    settings_.dropModulus = 3;
    EXPECT_EQ(droppedOf(9), (Modes{1, 4, 7}));
}

TEST_F(FrequencyDrop, TakesEveryFifthModeFromTheSecondWithDropModFive) {
    settings_.dropModulus = 5;
    EXPECT_EQ(droppedOf(12), (Modes{1, 6, 11}));
}

TEST_F(FrequencyDrop, RunsUpExponentiallyAtPlusEight) {
    settings_.dropFactor = 1.01F; // 1 + 10^(8 - 10)
    place(0, 0.5F, 100.0F);
    place(1, 0.5F, 40.0F);
    tick(200);
    // Each of 200 products rounds by up to 2^-24 of itself.
    const double factor = std::pow(static_cast<double>(1.01F), 200);
    EXPECT_NEAR(voice_.freq[0], 100.0 * factor, 100.0 * factor * 200 * 0x1p-24);
    EXPECT_NEAR(voice_.freq[1], 40.0 * factor, 40.0 * factor * 200 * 0x1p-24);
}

TEST_F(FrequencyDrop, RunsDownExponentiallyAtMinusEight) {
    settings_.dropFactor = 0.99F;
    place(0, 0.5F, 100.0F);
    tick(200);
    const double factor = std::pow(static_cast<double>(0.99F), 200);
    EXPECT_NEAR(voice_.freq[0], 100.0 * factor, 100.0 * factor * 200 * 0x1p-24);
}

TEST_F(FrequencyDrop, DoesNothingWithAFactorOfOne) {
    settings_.dropFactor = 1.0F;
    place(0, 0.5F, 440.1F);
    tick(1000);
    EXPECT_EQ(voice_.freq[0], 440.1F);
}

TEST_F(FrequencyDrop, RoundsEveryProductToFloat) {
    settings_.dropFactor = 1.01F;
    place(0, 0.5F, 100.0F);
    float expected = 100.0F;
    for (int n = 0; n < 50; ++n) {
        voice_.tick();
        // Two floats multiply exactly in double.
        expected = static_cast<float>(static_cast<double>(expected) * static_cast<double>(1.01F));
        EXPECT_EQ(voice_.freq[0], expected);
    }
}

TEST_F(FrequencyDrop, LeavesTheTargetBehind) {
    place(0, 0.5F, 64.0F);
    tick(2);
    EXPECT_EQ(voice_.freq[0], 16.0F);
    EXPECT_EQ(voice_.targetFreq[0], 64.0F);
    EXPECT_EQ(voice_.freqStep[0], 0.0F);
}

TEST_F(FrequencyDrop, IsGlidedBackFromByTheNextShift) {
    settings_.initialModes = 1;
    settings_.dropFactor = 0.5F;
    voice_.start(64.0F);
    tick(2);
    settings_.dropFactor = 1.0F;
    tickWithShift();
    EXPECT_EQ(voice_.freq[0], 16.0F);
    EXPECT_EQ(voice_.freqStep[0], 0.75F); // 48 Hz in 64 samples
    tick(64);
    EXPECT_EQ(voice_.freq[0], 64.0F);
}

TEST_F(FrequencyDrop, FollowsTheTurnOfTheSameSample) {
    place(0, 0.5F, 64.0F);
    voice_.tick();
    EXPECT_EQ(voice_.phase[0], 0x1.921fb6p-2F); // a sixteenth of a cycle, by the old 64 Hz
}

// Gliding modes

TEST_F(FrequencyDrop, TakesGlidingModesToAsLongAsDropModIsBelowTwo) {
    placeModes(1);
    voice_.targetFreq[0] = 128.0F;
    voice_.freqStep[0] = 4.0F;
    voice_.tick();
    EXPECT_EQ(voice_.freq[0], 34.0F); // (64 + 4) / 2
    voice_.tick();
    EXPECT_EQ(voice_.freq[0], 19.0F);
    EXPECT_EQ(voice_.freqStep[0], 4.0F);
}

TEST_F(FrequencyDrop, SparesGlidingModesFromDropModTwoOn) {
    settings_.dropModulus = 2;
    placeModes(4);
    voice_.targetFreq[1] = 68.0F;
    voice_.freqStep[1] = 2.0F;
    voice_.tick();
    EXPECT_EQ(voice_.freq[1], 66.0F);
    EXPECT_EQ(voice_.freq[3], 32.0F);
    voice_.tick(); // arrives, and drops in the same sample
    EXPECT_EQ(voice_.freq[1], 34.0F);
    voice_.tick();
    EXPECT_EQ(voice_.freq[1], 17.0F);
}

TEST_F(FrequencyDrop, GoesOnWhileAnAmplitudeGlides) {
    settings_.dropModulus = 2;
    placeModes(2);
    voice_.targetAmp[1] = 0.5F;
    voice_.ampStep[1] = 0.0625F;
    voice_.tick();
    EXPECT_EQ(voice_.freq[1], 32.0F);
}

TEST_F(FrequencyDrop, SparesAModeThatHoldsAnIdleStep) {
    settings_.dropModulus = 2;
    placeModes(2);
    for (const float step : {3.0F, std::numeric_limits<float>::denorm_min(), kNaN}) {
        voice_.freqStep[1] = step; // on its target, so it does not move
        voice_.tick();
        EXPECT_EQ(voice_.freq[1], 64.0F);
    }
    voice_.freqStep[1] = -0.0F;
    voice_.tick();
    EXPECT_EQ(voice_.freq[1], 32.0F);
}

TEST_F(FrequencyDrop, CanCarryAGlidePastItsTargetForGood) {
    // The step leads from 64 down to 40 and would take 6 samples. The drop jumps over 40 where the
    // glide does not look: from then on the step points away.
    settings_.dropFactor = 0.5F;
    placeModes(1);
    voice_.targetFreq[0] = 40.0F;
    voice_.freqStep[0] = -4.0F;
    voice_.tick();
    EXPECT_EQ(voice_.freq[0], 30.0F); // (64 - 4) / 2
    EXPECT_EQ(voice_.freqStep[0], -4.0F);
    voice_.tick();
    EXPECT_EQ(voice_.freq[0], 13.0F);
    settings_.dropFactor = 1.0F;
    tick(10);
    EXPECT_EQ(voice_.freq[0], -27.0F);
}

TEST_F(FrequencyDrop, CanHoldAGlideBack) {
    // Up 4 Hz a sample, then down by half: rests where (f + 4) / 2 = f, far from the target.
    settings_.dropFactor = 0.5F;
    placeModes(1);
    voice_.targetFreq[0] = 128.0F;
    voice_.freqStep[0] = 4.0F;
    tick(100);
    EXPECT_EQ(voice_.freq[0], 4.0F);
}

TEST_F(FrequencyDrop, LeavesInactiveModesAlone) {
    placeModes(3);
    voice_.activeCount = 1;
    voice_.tick();
    EXPECT_EQ(voice_.freq[0], 32.0F);
    EXPECT_EQ(voice_.freq[2], 64.0F);
}

} // namespace
} // namespace zelvatone
