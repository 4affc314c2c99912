// How a mode set is laid out: the harmonic series, the extra modes, and what shapes them.
#include "tests/voice/VoiceBench.h"

#include <vector>

namespace zelvatone {
namespace {

class ModeTargets : public VoiceBench {
protected:
    void compute(float baseFreq, std::int32_t count) {
        voice_.baseFreq = baseFreq;
        voice_.computeTargets(count);
        amps_.assign(voice_.targetAmp.begin(), voice_.targetAmp.begin() + count);
        freqs_.assign(voice_.targetFreq.begin(), voice_.targetFreq.begin() + count);
    }

    std::vector<float> amps_;
    std::vector<float> freqs_;
};

using Floats = std::vector<float>;

TEST_F(ModeTargets, AreAPureHarmonicSeriesWithoutExtraModes) {
    compute(110.0F, 5);
    EXPECT_EQ(freqs_, (Floats{110, 220, 330, 440, 550}));
    EXPECT_EQ(amps_, (Floats{1.0F, 0.5F, 1.0F / 3.0F, 0.25F, 0.2F}));
}

TEST_F(ModeTargets, SlopeWithFalloff) {
    settings_.falloff = 0.0F;
    compute(1.0F, 4);
    EXPECT_EQ(amps_, (Floats{1, 1, 1, 1}));
    settings_.falloff = -2.0F;
    compute(1.0F, 4);
    EXPECT_EQ(amps_, (Floats{1.0F, 0.25F, 1.0F / 9.0F, 0.0625F}));
    settings_.falloff = -3.0F;
    compute(1.0F, 4);
    EXPECT_EQ(amps_, (Floats{1.0F, 0.125F, 1.0F / 27.0F, 0.015625F}));
    settings_.falloff = -0.5F;
    compute(1.0F, 4);
    EXPECT_EQ(amps_[1], static_cast<float>(std::sqrt(0.5)));
    EXPECT_EQ(amps_[3], 0.5F);
}

TEST_F(ModeTargets, RoundEachHarmonicOfTheBaseToFloat) {
    compute(261.62558F, 100);
    for (int k = 1; k <= 100; ++k) {
        // An int of two digits times a float is exact in double.
        EXPECT_EQ(freqs_[k - 1], static_cast<float>(k * static_cast<double>(261.62558F)));
    }
}

TEST_F(ModeTargets, LoseTheEvenHarmonicsAtParityOne) {
    settings_.parity = 1.0F;
    settings_.falloff = 0.0F;
    compute(50.0F, 6);
    EXPECT_EQ(amps_, (Floats{1, 0, 1, 0, 1, 0}));
}

TEST_F(ModeTargets, LoseTheOddHarmonicsAndTheFundamentalAtParityMinusOne) {
    settings_.parity = -1.0F;
    settings_.falloff = 0.0F;
    compute(50.0F, 6);
    EXPECT_EQ(amps_, (Floats{0, 1, 0, 1, 0, 1}));
}

TEST_F(ModeTargets, AreThinnedByPartOfTheParityAndNeverRaised) {
    settings_.falloff = 0.0F;
    settings_.parity = 0.25F;
    compute(50.0F, 3);
    EXPECT_EQ(amps_, (Floats{1.0F, 0.75F, 1.0F}));
    settings_.parity = -0.25F;
    compute(50.0F, 3);
    EXPECT_EQ(amps_, (Floats{0.75F, 1.0F, 0.75F}));
    settings_.parity = 0.1F; // 1 - 0.1 in double, then rounded
    compute(50.0F, 2);
    EXPECT_EQ(amps_[1], static_cast<float>(1.0 - static_cast<double>(0.1F)));
}

TEST_F(ModeTargets, AreJitteredUpAtEvenAndDownAtOddHarmonicsButNotAtTheFundamental) {
    settings_.jitterHz = 3.0F;
    compute(100.0F, 5);
    EXPECT_EQ(freqs_, (Floats{100, 203, 297, 403, 497}));
}

TEST_F(ModeTargets, MeetAtTheBaseWithAHundredHertzJitterOnAFiftyHertzNote) {
    settings_.jitterHz = 100.0F;
    compute(50.0F, 3);
    EXPECT_EQ(freqs_, (Floats{50, 200, 50}));
}

TEST_F(ModeTargets, MayBeJitteredBelowZeroHertz) {
    settings_.jitterHz = 100.0F;
    compute(20.0F, 3);
    EXPECT_EQ(freqs_[2], -40.0F);
}

TEST_F(ModeTargets, PutTheExtraModesFirst) {
    settings_.primeModes = 2;
    settings_.detune = 1.0F;
    settings_.primePower = 0.75F;
    compute(120.0F, 5);
    EXPECT_EQ(freqs_, (Floats{60, 40, 120, 240, 360}));
    EXPECT_EQ(amps_, (Floats{0.75F, 0.75F, 1.0F, 0.5F, 1.0F / 3.0F}));
}

TEST_F(ModeTargets, AreAllExtraModesWhereMoreAreAskedForThanThereIsRoom) {
    settings_.primeModes = 5;
    settings_.detune = 1.0F;
    settings_.primePower = 2.0F;
    compute(420.0F, 3);
    EXPECT_EQ(freqs_, (Floats{210, 140, 84}));
    EXPECT_EQ(amps_, (Floats{2, 2, 2}));
}

TEST_F(ModeTargets, LeaveExtraModesOutOfFalloffParityAndJitter) {
    settings_.primeModes = 2;
    settings_.detune = 1.0F;
    settings_.primePower = 0.5F;
    settings_.falloff = -3.0F;
    settings_.parity = -1.0F;
    settings_.jitterHz = 10.0F;
    compute(120.0F, 4);
    EXPECT_EQ(freqs_, (Floats{60, 40, 120, 250}));
    EXPECT_EQ(amps_, (Floats{0.5F, 0.5F, 0.0F, 0.125F}));
}

TEST_F(ModeTargets, PlaceExtraModesBelowTheNoteByPowersOfThePrimes) {
    settings_.primeModes = 4;
    settings_.detune = 2.0F;
    compute(441.0F, 4);
    EXPECT_EQ(freqs_, (Floats{441.0F / 4, 441.0F / 9, 441.0F / 25, 441.0F / 49}));
    settings_.detune = 0.5F; // the power is rounded to float before it divides
    compute(440.0F, 4);
    EXPECT_EQ(freqs_[0], 440.0F / static_cast<float>(std::sqrt(2.0)));
    EXPECT_EQ(freqs_[1], 440.0F / static_cast<float>(std::sqrt(3.0)));
    EXPECT_EQ(freqs_[3], 440.0F / static_cast<float>(std::sqrt(7.0)));
}

bool isPrime(int n) {
    for (int d = 2; d * d <= n; ++d) {
        if (n % d == 0) {
            return false;
        }
    }
    return true;
}

TEST_F(ModeTargets, KnowAllPrimesBelowAHundredInOrder) {
    settings_.primeModes = 25;
    settings_.detune = 1.0F;
    compute(1.0F, 25);
    std::size_t mode = 0;
    for (int n = 2; n < 100; ++n) {
        if (isPrime(n)) {
            ASSERT_LT(mode, freqs_.size());
            EXPECT_EQ(freqs_[mode++], 1.0F / static_cast<float>(n));
        }
    }
    EXPECT_EQ(mode, 25U);
}

TEST_F(ModeTargets, AreLeftAsTheyWereBeyondTheCount) {
    aim(3, 0.375F, 77.0F);
    compute(100.0F, 3);
    EXPECT_EQ(voice_.targetAmp[3], 0.375F);
    EXPECT_EQ(voice_.targetFreq[3], 77.0F);
    compute(100.0F, 0);
    EXPECT_EQ(voice_.targetFreq[0], 100.0F);
}

TEST_F(ModeTargets, DoNotTouchWhatSoundsNow) {
    place(0, 0.25F, 33.0F, 1.0F);
    compute(100.0F, 3);
    EXPECT_EQ(voice_.amp[0], 0.25F);
    EXPECT_EQ(voice_.freq[0], 33.0F);
    EXPECT_EQ(voice_.phase[0], 1.0F);
    EXPECT_EQ(voice_.activeCount, 1);
}

TEST_F(ModeTargets, AreAllHarmonicWithAnExtraCountThatIsNotANumber) {
    settings_.primeModes = kLowestInt; // what a NaN parameter reads as
    compute(100.0F, 3);
    EXPECT_EQ(freqs_, (Floats{100, 200, 300}));
}

} // namespace
} // namespace zelvatone
