// When a faded mode is dropped from the bank.
#include "tests/voice/VoiceBench.h"

namespace zelvatone {
namespace {

using Trim = VoiceBench;

TEST_F(Trim, DropsTrailingSilentModes) {
    place(0, 0.5F, 100.0F);
    place(1, 0.0F, 200.0F);
    place(2, 0.0F, 300.0F);
    voice_.tick();
    EXPECT_EQ(voice_.activeCount, 1);
    EXPECT_EQ(voice_.targetCount, 3); // the set is still of three
}

TEST_F(Trim, KeepsASilentModeBelowASoundingOne) {
    place(0, 0.0F, 100.0F);
    place(1, 0.0F, 200.0F);
    place(2, 0.5F, 300.0F);
    tick(10);
    EXPECT_EQ(voice_.activeCount, 3);
}

TEST_F(Trim, EmptiesASilentBank) {
    place(0, 0.0F, 100.0F);
    place(1, 0.0F, 200.0F);
    voice_.tick();
    EXPECT_EQ(voice_.activeCount, 0);
    EXPECT_EQ(voice_.tick(), 0.0F);
}

TEST_F(Trim, KeepsAModeThatIsSilentButHasATarget) {
    place(0, 0.0F, 100.0F);
    voice_.targetAmp[0] = 0.5F; // its step is 0: it stays silent, and stays
    tick(10);
    EXPECT_EQ(voice_.activeCount, 1);
}

TEST_F(Trim, KeepsAModeThatStillSoundsOnItsWayToZero) {
    place(0, 0.5F, 100.0F);
    place(1, 0.0625F, 200.0F);
    voice_.targetAmp[1] = 0.0F;
    voice_.ampStep[1] = -0.03125F;
    voice_.tick();
    EXPECT_EQ(voice_.activeCount, 2);
    voice_.tick(); // reaches zero, and goes in the same sample
    EXPECT_EQ(voice_.activeCount, 1);
}

TEST_F(Trim, TakesExactZerosOnly) {
    for (const float nearly : {std::numeric_limits<float>::denorm_min(), -0x1p-140F, kNaN}) {
        place(0, nearly, 100.0F);
        voice_.targetAmp[0] = 0.0F;
        voice_.tick();
        EXPECT_EQ(voice_.activeCount, 1) << nearly;
        place(0, 0.0F, 100.0F);
        voice_.targetAmp[0] = nearly;
        voice_.tick();
        EXPECT_EQ(voice_.activeCount, 1) << nearly;
    }
}

TEST_F(Trim, TakesANegativeZeroForZero) {
    place(0, -0.0F, 100.0F);
    voice_.tick();
    EXPECT_EQ(voice_.activeCount, 0);
}

TEST_F(Trim, StopsThePhaseOfADroppedModeWhereItIs) {
    place(0, 0.5F, 16.0F);
    place(1, 0.25F, 16.0F, 1.0F);
    voice_.targetAmp[1] = 0.0F;
    voice_.ampStep[1] = -0.125F;
    voice_.tick();
    const float last = voice_.phase[1];
    EXPECT_GT(last, 1.0F);
    tick(100); // dropped in the first of these, before phases move
    EXPECT_EQ(voice_.activeCount, 1);
    EXPECT_EQ(voice_.phase[1], last);
}

TEST_F(Trim, LeavesThePhaseForAModeThatComesBack) {
    settings_.initialModes = 2;
    settings_.falloff = 0.0F;
    settings_.maxModes = 1;
    voice_.start(17.0F);
    tickWithShift();
    tick(64);
    EXPECT_EQ(voice_.activeCount, 1);
    const float frozen = voice_.phase[1];
    EXPECT_NE(frozen, 0.0F);
    tick(7);
    settings_.maxModes = 2;
    settings_.minModes = 2;
    settings_.exitPeel = 1.0F; // comes back at 0 Hz, so that its phase stands still at first
    tickWithShift();
    EXPECT_EQ(voice_.activeCount, 2);
    EXPECT_EQ(voice_.phase[1], frozen);
}

} // namespace
} // namespace zelvatone
