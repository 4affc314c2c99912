// Numbers below the smallest normal float, 2^-126, are part of the sound's definition: a fade that
// ends there takes as many samples as its steps say. A processor set to flush them would end it at
// once, so nothing here may set that mode.
#include "tests/voice/VoiceBench.h"

namespace zelvatone {
namespace {

constexpr float kLeast = std::numeric_limits<float>::denorm_min(); // 2^-149

class Denormals : public VoiceBench {
protected:
    Denormals() { wave(1); }
};

TEST_F(Denormals, FadeInStepsOfTheLeastFloat) {
    place(0, 10.0F * kLeast, 0.0F, 4.0F);
    voice_.targetAmp[0] = 0.0F;
    voice_.ampStep[0] = -kLeast;
    for (std::uint32_t left = 10; left > 0; --left) {
        EXPECT_EQ(bitsOf(voice_.amp[0]), left); // such floats count in units of 2^-149
        EXPECT_EQ(voice_.activeCount, 1);
        voice_.tick();
    }
    EXPECT_EQ(voice_.activeCount, 0);
}

TEST_F(Denormals, AreSummedAndScaledBitByBit) {
    place(0, 10.0F * kLeast, 0.0F, 4.0F);
    place(1, 4.0F * kLeast, 0.0F, 1.0F);  // on the low half
    EXPECT_EQ(bitsOf(voice_.tick()), 3U); // (10 - 4) / 2
}

TEST_F(Denormals, RoundHalfOfAnOddUnitToEven) {
    place(0, 5.0F * kLeast, 0.0F, 4.0F);
    EXPECT_EQ(bitsOf(voice_.tick()), 2U);
    place(0, 7.0F * kLeast, 0.0F, 4.0F);
    EXPECT_EQ(bitsOf(voice_.tick()), 4U);
}

TEST_F(Denormals, AreHeardAfterALongFade) {
    place(0, 0x1p-120F, 0.0F, 4.0F);
    aim(0, 0.0F, 0.0F);
    voice_.ampStep[0] = -0x1.fcp-121F; // leaves 2^-127
    voice_.tick();
    EXPECT_EQ(voice_.amp[0], 0x1p-127F);
    EXPECT_EQ(voice_.tick(), 0x1p-128F);
}

TEST_F(Denormals, AreReachedOneByOneByAFrequencyDrop) {
    settings_.dropFactor = 0.5F;
    place(0, 0.5F, 0x1p-120F);
    tick(29);
    EXPECT_EQ(bitsOf(voice_.freq[0]), 1U);
    voice_.tick(); // half of the least float is a tie, and goes to even: zero
    EXPECT_EQ(voice_.freq[0], 0.0F);
}

TEST_F(Denormals, AreKeptInAPhase) {
    place(0, 0.5F, 0.0F, 3.0F * kLeast);
    tick(10);
    EXPECT_EQ(bitsOf(voice_.phase[0]), 3U);
}

TEST_F(Denormals, MakeStepsThatReachTheTarget) {
    place(0, 0.0F, 0.0F, 4.0F);
    voice_.targetAmp[0] = 64.0F * kLeast;
    voice_.ampStep[0] = kLeast;
    tick(63);
    EXPECT_EQ(bitsOf(voice_.amp[0]), 63U);
    EXPECT_EQ(voice_.ampStep[0], kLeast);
    voice_.tick();
    EXPECT_EQ(bitsOf(voice_.amp[0]), 64U);
    EXPECT_EQ(voice_.ampStep[0], 0.0F);
}

TEST_F(Denormals, StayEnabledInTheCallersArithmetic) {
    settings_.initialModes = 10;
    voice_.start(100.0F);
    tick(10);
    volatile float least = kLeast;
    const volatile float twice = least * 2.0F;
    EXPECT_EQ(bitsOf(twice), 2U);
}

} // namespace
} // namespace zelvatone
