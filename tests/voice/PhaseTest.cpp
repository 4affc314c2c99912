// How phases turn and wrap, with and without pitch bend.
#include "tests/voice/VoiceBench.h"

#include <numbers>
#include <random>
#include <vector>

namespace zelvatone {
namespace {

constexpr double kTurn = 2.0 * std::numbers::pi;
// Floats around one and two cycles. The float nearest 2 pi is 1.7e-7 above it.
constexpr float kTurnAsFloat = 0x1.921fb6p+2F;
constexpr float kBelowTurn = 0x1.921fb4p+2F;
constexpr float kTwoTurnsAsFloat = 0x1.921fb6p+3F;

class Phase : public VoiceBench {
protected:
    Phase() { place(0, 0.5F, 0.0F); }

    // A mode at 0 Hz adds nothing to its phase: what one sample does to it is the wrap alone.
    float wrapped(float phase) {
        voice_.phase[0] = phase;
        printedBy([this] { voice_.tick(); }); // phases far outside make the lookup talk
        return voice_.phase[0];
    }

    float turned(float freq, float phase) {
        place(0, 0.5F, freq, phase);
        voice_.tick();
        return voice_.phase[0];
    }
};

TEST_F(Phase, StaysAsItIsInsideTheCycle) {
    for (const float phase : {0.0F, 1e-30F, 1.0F, 3.1415927F, 6.0F}) {
        EXPECT_EQ(bitsOf(wrapped(phase)), bitsOf(phase));
    }
}

TEST_F(Phase, KeepsTheLargestFloatBelowOneCycle) {
    EXPECT_EQ(wrapped(kBelowTurn), kBelowTurn);
}

TEST_F(Phase, WrapsAtTheFloatNearestOneCycleWhichIsAboveIt) {
    // 6.2831854820251465 - 6.283185307179586, rounded to float.
    EXPECT_EQ(wrapped(kTurnAsFloat), 0x1.777a5cp-23F);
}

TEST_F(Phase, LosesACycleAboveOneInDouble) {
    EXPECT_EQ(wrapped(0x1.921fb8p+2F), 0x1.5dde98p-21F);
    EXPECT_EQ(wrapped(7.0F), static_cast<float>(7.0 - kTurn));
    EXPECT_EQ(wrapped(12.0F), static_cast<float>(12.0 - kTurn));
    EXPECT_EQ(wrapped(0x1.921fb4p+3F), 0x1.921fb2p+2F); // just below two cycles
}

TEST_F(Phase, GainsACycleBelowZeroInDouble) {
    EXPECT_EQ(wrapped(-1.0F), static_cast<float>(kTurn - 1.0));
    EXPECT_EQ(wrapped(-6.0F), static_cast<float>(kTurn - 6.0));
    EXPECT_EQ(wrapped(-kBelowTurn), 0x1.4442d2p-22F); // just above minus one cycle
}

TEST_F(Phase, RoundsUpToAWholeCycleFromBarelyBelowZero) {
    // 2 pi - 10^-30 is 2 pi, and the float nearest that wraps at the next sample.
    EXPECT_EQ(wrapped(-1e-30F), kTurnAsFloat);
    EXPECT_EQ(wrapped(voice_.phase[0]), 0x1.777a5cp-23F);
}

TEST_F(Phase, WrapsByTheFloatNearestOneCycleFromTwoCyclesOn) {
    EXPECT_EQ(bitsOf(wrapped(kTwoTurnsAsFloat)), bitsOf(0.0F));
    EXPECT_EQ(wrapped(0x1.921fb8p+3F), 0x1p-20F);
    EXPECT_EQ(wrapped(8.0F * kTurnAsFloat), 0.0F);
}

TEST_F(Phase, WrapsByTheSameAndStaysNegativeFromMinusOneCycleDown) {
    EXPECT_EQ(bitsOf(wrapped(-kTurnAsFloat)), bitsOf(-0.0F));
    EXPECT_EQ(wrapped(-0x1.921fb8p+2F), -0x1p-21F);
    const float left = wrapped(-10.0F);
    EXPECT_EQ(left, static_cast<float>(static_cast<double>(kTurnAsFloat) - 10.0));
    EXPECT_LT(left, 0.0F);
    EXPECT_EQ(wrapped(left), static_cast<float>(kTurn + left)); // and then gains a cycle
}

// The remainder by subtraction: exact in double, as all of it are multiples of a float's last bit.
double remainderBySubtraction(double phase) {
    const double turn = kTurnAsFloat;
    double rest = std::fabs(phase);
    while (rest >= turn) {
        rest -= turn;
    }
    return std::copysign(rest, phase);
}

TEST_F(Phase, IsTheRemainderWithItsSignFarOutsideTheCycle) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> magnitude(12.6F, 4000.0F);
    for (int n = 0; n < 500; ++n) {
        const float phase = n % 2 == 0 ? magnitude(random) : -magnitude(random);
        EXPECT_EQ(wrapped(phase), static_cast<float>(remainderBySubtraction(phase))) << phase;
    }
}

TEST_F(Phase, StaysNotANumberAndSilent) {
    EXPECT_TRUE(std::isnan(wrapped(kNaN)));
    EXPECT_TRUE(std::isnan(wrapped(kInfinity)));
    EXPECT_TRUE(std::isnan(wrapped(-kInfinity)));
    printedBy([this] { EXPECT_EQ(voice_.tick(), 0.0F); });
}

TEST_F(Phase, ComesBackToALostModeWithTheNextNote) {
    settings_.initialModes = 2;
    voice_.start(100.0F);
    voice_.phase[1] = kNaN;
    printedBy([this] { tick(3); });
    voice_.start(100.0F);
    EXPECT_EQ(voice_.phase[1], 0.0F);
    EXPECT_EQ(printedBy([this] { tick(100); }), "");
}

// Turning

TEST_F(Phase, TurnsByItsFrequencyAtEachSample) {
    // At 1024 samples a second, one hertz is the float nearest 2 pi / 1024.
    EXPECT_EQ(turned(1.0F, 0.0F), 0x1.921fb6p-8F);
    EXPECT_EQ(turned(64.0F, 0.0F), 0x1.921fb6p-2F);
    EXPECT_EQ(turned(64.0F, 0x1.921fb6p-1F), 0x1.2d97c8p0F); // 1/16 + 1/8 of a cycle
}

TEST_F(Phase, TurnsAnAtTheCommonSampleRate) {
    settings_.secondsPerSample = 1.0 / 44100.0;
    // 440 x float(2 pi / 44100), in float arithmetic done outside this program.
    EXPECT_EQ(turned(440.0F, 0.0F), 0x1.00c692p-4F);
}

TEST_F(Phase, RoundsItsTurnBeforeItIsAdded) {
    // From exact fractions, rounded to float after the product and after the sum. A fused
    // multiply-add would give 0x1.1ea682p+0 and 0x1.10e562p+1.
    EXPECT_EQ(turned(101.0F, 0.5F), 0x1.1ea684p+0F);
    EXPECT_EQ(turned(103.0F, 1.5F), 0x1.10e56p+1F);
}

TEST_F(Phase, TurnsBackwardsBelowZeroHertz) {
    EXPECT_EQ(turned(-64.0F, 1.0F), 1.0F - 0x1.921fb6p-2F);
    EXPECT_EQ(turned(-64.0F, 0.0F),
              static_cast<float>(kTurn - static_cast<double>(0x1.921fb6p-2F)));
}

TEST_F(Phase, TurnsByTheFrequencyAfterTheGlideOfTheSameSample) {
    place(0, 0.5F, 1.0F, 0.0F);
    voice_.targetFreq[0] = 64.0F;
    voice_.freqStep[0] = 63.0F;
    voice_.tick();
    EXPECT_EQ(voice_.phase[0], 0x1.921fb6p-2F);
}

// Pitch bend

TEST_F(Phase, TurnsTwiceAsFastWhenBentAnOctaveUp) {
    const float plain = turned(77.0F, 0.0F);
    settings_.bendRatio = 2.0;
    EXPECT_EQ(turned(77.0F, 0.0F), 2.0F * plain);
    settings_.bendRatio = 0.5;
    EXPECT_EQ(turned(77.0F, 0.0F), 0.5F * plain);
}

TEST_F(Phase, TurnsByTheBendAtOnceInEveryMode) {
    settings_.initialModes = 5;
    voice_.start(20.0F);
    ModeArray before = voice_.phase;
    voice_.tick();
    for (std::int32_t i = 0; i < 5; ++i) {
        before[i] = voice_.phase[i] - before[i];
    }
    settings_.bendRatio = 2.0;
    const ModeArray between = voice_.phase;
    voice_.tick();
    for (std::int32_t i = 0; i < 5; ++i) {
        // Phases are near 1: a sum is rounded by up to 2^-24.
        EXPECT_NEAR(voice_.phase[i] - between[i], 2.0F * before[i], 0x1p-23F);
    }
}

TEST_F(Phase, TakesTheBendIntoTheIncrementInDouble) {
    settings_.bendRatio = std::pow(2.0, 1.0 / 12.0);
    // The product rounds once to float, and 1 Hz shows it.
    const double bent = kTurn / 1024.0 * 1.0594630943592953;
    EXPECT_EQ(turned(1.0F, 0.0F), static_cast<float>(bent));
}

TEST_F(Phase, BendsWithoutTouchingAFrequencyThatGlides) {
    const auto frequenciesAt = [this](double bendRatio) {
        settings_.bendRatio = bendRatio;
        place(0, 0.5F, 100.0F, 0.0F);
        voice_.targetFreq[0] = 130.0F;
        voice_.freqStep[0] = 0.5F;
        std::vector<float> result;
        for (int n = 0; n < 80; ++n) {
            voice_.tick();
            result.push_back(voice_.freq[0]);
        }
        return result;
    };
    EXPECT_EQ(frequenciesAt(2.0), frequenciesAt(1.0));
}

TEST_F(Phase, LeavesInactiveModesStanding) {
    voice_.freq[3] = 100.0F;
    voice_.phase[3] = 1.0F;
    tick(10);
    EXPECT_EQ(voice_.phase[3], 1.0F);
}

} // namespace
} // namespace zelvatone
