// The loudness of a note over time. Times are powers of two where a test wants exact levels.
#include "engine/ADSR.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zelvatone {
namespace {

class ADSRTest : public ::testing::Test {
protected:
    EnvelopeSettings settings_{.attack = 0.25, .decay = 0.5, .sustain = 0.5, .release = 2.0};
    ADSR envelope_{&settings_};

    // Ends at sustain: attack and decay are over.
    void hold(double velocity) {
        envelope_.trigger(velocity);
        envelope_.tick(1.0);
    }
};

TEST_F(ADSRTest, BeginsIdle) {
    EXPECT_FALSE(envelope_.isActive());
    EXPECT_EQ(envelope_.state, ADSR::kIdle);
    EXPECT_EQ(envelope_.time, 0.0);
    EXPECT_EQ(envelope_.velocity, 0.0);
    EXPECT_EQ(envelope_.level, 0.0);
    EXPECT_EQ(envelope_.settings, &settings_);
}

TEST_F(ADSRTest, NumbersItsStates) {
    EXPECT_EQ(ADSR::kIdle, 0);
    EXPECT_EQ(ADSR::kHeld, 1);
    EXPECT_EQ(ADSR::kReleased, 2);
}

TEST_F(ADSRTest, StaysSilentWhileIdleButItsClockRuns) {
    EXPECT_EQ(envelope_.tick(0.125), 0.0F);
    EXPECT_EQ(envelope_.time, 0.125);
    EXPECT_FALSE(envelope_.isActive());
}

TEST_F(ADSRTest, RisesInAStraightLineFromItsFirstTick) {
    envelope_.trigger(1.0);
    EXPECT_TRUE(envelope_.isActive());
    EXPECT_EQ(envelope_.tick(0.0625), 0.25F);
    EXPECT_EQ(envelope_.tick(0.0625), 0.5F);
    EXPECT_EQ(envelope_.tick(0.0625), 0.75F);
    EXPECT_EQ(envelope_.tick(0.0625), 1.0F); // the attack time itself belongs to the decay
}

TEST_F(ADSRTest, FallsInAStraightLineToTheSustainLevel) {
    envelope_.trigger(1.0);
    envelope_.tick(0.25);
    EXPECT_EQ(envelope_.tick(0.125), 0.875F);
    EXPECT_EQ(envelope_.tick(0.125), 0.75F);
    EXPECT_EQ(envelope_.tick(0.125), 0.625F);
    EXPECT_EQ(envelope_.tick(0.125), 0.5F);
}

TEST_F(ADSRTest, SustainsForAsLongAsTheNoteIsHeld) {
    hold(1.0);
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(envelope_.tick(10.0), 0.5F);
        ASSERT_TRUE(envelope_.isActive());
    }
}

TEST_F(ADSRTest, StaysActiveAtASustainOfZero) {
    settings_.sustain = 0.0;
    hold(1.0);
    EXPECT_EQ(envelope_.tick(1.0), 0.0F);
    EXPECT_TRUE(envelope_.isActive());
}

TEST_F(ADSRTest, FollowsTheSustainKnobWhileItHolds) {
    hold(1.0);
    settings_.sustain = 0.875;
    EXPECT_EQ(envelope_.tick(0.125), 0.875F);
}

TEST_F(ADSRTest, FollowsTheAttackKnobInTheMiddleOfTheAttack) {
    envelope_.trigger(1.0);
    envelope_.tick(0.125);
    settings_.attack = 1.0;
    EXPECT_EQ(envelope_.tick(0.125), 0.25F);
}

TEST_F(ADSRTest, FadesInAStraightLineToZero) {
    hold(1.0);
    envelope_.release();
    EXPECT_EQ(envelope_.tick(0.5), 0.375F);
    EXPECT_EQ(envelope_.tick(0.5), 0.25F);
    EXPECT_EQ(envelope_.tick(0.5), 0.125F);
    EXPECT_TRUE(envelope_.isActive());
}

TEST_F(ADSRTest, EndsWithTheTickThatReachesTheReleaseTime) {
    hold(1.0);
    envelope_.release();
    envelope_.tick(1.5);
    EXPECT_TRUE(envelope_.isActive());
    EXPECT_EQ(envelope_.tick(0.5), 0.0F);
    EXPECT_FALSE(envelope_.isActive());
    EXPECT_EQ(envelope_.tick(0.5), 0.0F);
}

TEST_F(ADSRTest, FadesFromWhereTheAttackWasReleased) {
    envelope_.trigger(1.0);
    envelope_.tick(0.0625); // a quarter of the attack
    envelope_.release();
    EXPECT_EQ(envelope_.tick(1.0), 0.125F);
    EXPECT_EQ(envelope_.tick(0.5), 0.0625F);
}

TEST_F(ADSRTest, FadesFromWhereTheDecayWasReleased) {
    envelope_.trigger(1.0);
    envelope_.tick(0.5); // half of the decay
    envelope_.release();
    EXPECT_EQ(envelope_.tick(1.0), 0.375F);
}

TEST_F(ADSRTest, FollowsTheReleaseKnobWhileItFades) {
    hold(1.0);
    envelope_.release();
    EXPECT_EQ(envelope_.tick(0.5), 0.375F); // a quarter of two seconds
    settings_.release = 1.0;
    EXPECT_EQ(envelope_.tick(0.25), 0.125F); // three quarters of one second
    settings_.release = 0.5;
    EXPECT_EQ(envelope_.tick(0.0), 0.0F);
    EXPECT_FALSE(envelope_.isActive());
}

TEST_F(ADSRTest, IgnoresTheSustainKnobWhileItFades) {
    hold(1.0);
    envelope_.release();
    settings_.sustain = 1.0;
    EXPECT_EQ(envelope_.tick(1.0), 0.25F);
}

TEST_F(ADSRTest, StartsTheFadeAgainFromTheHeldLevelWhenItIsReleasedTwice) {
    hold(1.0);
    envelope_.release();
    envelope_.tick(1.0);
    envelope_.release();
    EXPECT_EQ(envelope_.tick(0.5), 0.375F);
}

TEST_F(ADSRTest, FadesFromTheLastNotesLevelWhenItIsReleasedIdle) {
    hold(1.0);
    envelope_.release();
    envelope_.tick(2.0);
    ASSERT_FALSE(envelope_.isActive());
    envelope_.release();
    EXPECT_TRUE(envelope_.isActive());
    EXPECT_EQ(envelope_.tick(1.0), 0.25F);
}

TEST_F(ADSRTest, IsSilentOnAFreshSlotWhenItIsTriggeredAndReleasedBeforeATick) {
    envelope_.trigger(1.0);
    envelope_.release();
    EXPECT_TRUE(envelope_.isActive());
    EXPECT_EQ(envelope_.tick(0.5), 0.0F);
    EXPECT_EQ(envelope_.tick(1.5), 0.0F);
    EXPECT_FALSE(envelope_.isActive());
}

TEST_F(ADSRTest, FadesTheOldLevelAtTheNewVelocityWhenItIsTriggeredAndReleasedBeforeATick) {
    hold(1.0);
    envelope_.release();
    envelope_.tick(2.0);
    envelope_.trigger(0.5);
    envelope_.release();
    EXPECT_EQ(envelope_.tick(1.0), 0.125F);
}

TEST_F(ADSRTest, RisesFromZeroAtEveryTriggerWhateverTheLevelWas) {
    hold(1.0);
    envelope_.trigger(1.0);
    EXPECT_EQ(envelope_.level, 0.5);
    EXPECT_EQ(envelope_.tick(0.0625), 0.25F);
    envelope_.release();
    envelope_.trigger(1.0);
    EXPECT_EQ(envelope_.tick(0.125), 0.5F);
}

TEST_F(ADSRTest, ScalesEverySegmentByTheVelocity) {
    envelope_.trigger(0.25);
    EXPECT_EQ(envelope_.tick(0.125), 0.125F);
    EXPECT_EQ(envelope_.tick(0.375), 0.1875F);
    EXPECT_EQ(envelope_.tick(0.5), 0.125F);
    envelope_.release();
    EXPECT_EQ(envelope_.tick(1.0), 0.0625F);
}

TEST_F(ADSRTest, KeepsItsLevelFreeOfVelocityAndFade) {
    hold(0.25);
    EXPECT_EQ(envelope_.level, 0.5);
    envelope_.release();
    envelope_.tick(1.0);
    EXPECT_EQ(envelope_.level, 0.5);
    EXPECT_EQ(envelope_.velocity, 0.25);
}

TEST_F(ADSRTest, RoundsOnlyTheReturnedValueToSinglePrecision) {
    settings_.attack = 3.0;
    const auto velocity = static_cast<double>(static_cast<float>(64 / 127.0));
    envelope_.trigger(velocity);
    EXPECT_EQ(envelope_.tick(1.0), static_cast<float>(velocity * (1.0 / 3.0)));
    EXPECT_EQ(envelope_.level, 1.0 / 3.0);
}

TEST_F(ADSRTest, CountsTimeInDoublePrecision) {
    const double dt = 1.0 / 44100.0;
    settings_.attack = 1.0;
    envelope_.trigger(1.0);
    double time = 0.0;
    for (int i = 0; i < 1000; ++i) {
        time += dt;
        ASSERT_EQ(envelope_.tick(dt), static_cast<float>(time));
    }
    EXPECT_EQ(envelope_.time, time);
}

TEST_F(ADSRTest, SurvivesSettingsThatAreNotNumbers) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    settings_ = {.attack = nan, .decay = nan, .sustain = 0.5, .release = nan};
    envelope_.trigger(1.0);
    EXPECT_EQ(envelope_.tick(0.125), 0.5F); // below no time that is not a number: sustain
    envelope_.release();
    EXPECT_EQ(envelope_.tick(0.125), 0.0F);
    EXPECT_FALSE(envelope_.isActive());
}

TEST_F(ADSRTest, PrintsALineForAnUnknownState) {
    envelope_.state = 3;
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(envelope_.tick(0.125), 0.0F);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Huh?\n");
    EXPECT_FALSE(envelope_.isActive());
    EXPECT_EQ(envelope_.time, 0.125);
}

} // namespace
} // namespace zelvatone
