// How the wheel and presses with Ctrl turn a knob.
#include "tests/vstgui/Fixtures.h"

#include <limits>
#include <thread>

namespace VSTGUI::test {
namespace {

constexpr float kTolerance = 1e-6F;
constexpr std::chrono::milliseconds kPause{500};

class KnobWheel : public KnobTest {
protected:
    KnobWheel() { knob->setValue(0.5F); }

    // Idles until the gesture has ended. Returns whether it did within some seconds.
    bool waitForTheEnd() {
        for (int wait = 0; wait < 1000 && recorder.count("end 0") == 0; ++wait) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            frame->idle();
        }
        return recorder.count("end 0") == 1;
    }
};

TEST_F(KnobWheel, TurnsByATenthOrWithShiftByAHundredth) {
    EXPECT_TRUE(wheel(1));
    EXPECT_NEAR(knob->getValue(), 0.6F, kTolerance);
    wheel(-1);
    EXPECT_NEAR(knob->getValue(), 0.5F, kTolerance);
    keys.add(ModifierKey::Shift);
    wheel(1);
    EXPECT_NEAR(knob->getValue(), 0.51F, kTolerance);
    keys.clear();
    EXPECT_TRUE(wheel(0, 1));
    EXPECT_NEAR(knob->getValue(), 0.51F, kTolerance);
}

TEST_F(KnobWheel, StopsAtTheEndAndReportsOnlyChanges) {
    knob->setValue(0.51F);
    for (const float expected : {0.61F, 0.71F, 0.81F, 0.91F, 1.F, 1.F}) {
        wheel(1);
        EXPECT_NEAR(knob->getValue(), expected, kTolerance);
    }
    EXPECT_EQ(recorder.count("value"), 5);
}

TEST_F(KnobWheel, IsOneGestureThatEndsHalfASecondAfterTheLastNotch) {
    wheel(1);
    wheel(1);
    const auto beforeTheLast = Recorder::Clock::now();
    wheel(-1);
    frame->idle();
    ASSERT_TRUE(waitForTheEnd());
    EXPECT_GE(recorder.endedAt - beforeTheLast, kPause);
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"control begin", "begin 0", "value", "value",
                                                      "value", "end 0", "control end"}));
}

TEST_F(KnobWheel, BeginsItsGestureSidewaysToo) {
    wheel(0, 1);
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"control begin", "begin 0"}));
}

TEST_F(KnobWheel, EndsBeforeAPressBeginsItsOwnGesture) {
    wheel(1);
    recorder.log.clear();
    press(320, 110);
    EXPECT_EQ(recorder.log,
              (std::vector<std::string>{"end 0", "control end", "control begin", "begin 0"}));
    release(320, 110);
    EXPECT_FALSE(knob->isEditing());
}

TEST_F(KnobWheel, DoesNothingDuringADrag) {
    press(320, 110);
    EXPECT_TRUE(wheel(1));
    EXPECT_EQ(knob->getValue(), 0.5F);
    release(320, 110);
    EXPECT_EQ(recorder.count("end 0"), 1);
}

TEST_F(KnobWheel, EndsItsGestureWhenTheFrameIsClosed) {
    wheel(1);
    frame->remember();
    frame->close();
    EXPECT_EQ(recorder.count("end 0"), 1);
    EXPECT_EQ(frame->getNbViews(), 0U);
}

class ControlPress : public KnobTest {};

TEST_F(ControlPress, SetsTheDefaultValueInOneGesture) {
    knob->setValue(0.25F);
    keys.add(ModifierKey::Control);
    EXPECT_TRUE(press(320, 130));
    EXPECT_EQ(knob->getValue(), 0.5F);
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"modifier", "control begin", "begin 0",
                                                      "value", "end 0", "control end"}));
    // The drag never began.
    EXPECT_FALSE(move(336, 114));
    EXPECT_FALSE(release(336, 114));
    EXPECT_EQ(knob->getValue(), 0.5F);
}

TEST_F(ControlPress, ReportsNothingAtTheDefaultValue) {
    knob->setValue(0.5F);
    keys.add(ModifierKey::Control);
    EXPECT_TRUE(press(320, 130));
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"modifier"}));
}

TEST_F(ControlPress, IsAnOrdinaryDragWithShiftBesides) {
    keys.add(ModifierKey::Control);
    keys.add(ModifierKey::Shift);
    EXPECT_NEAR(drag({320, 110}, {340, 130}), 0.8333333F, kTolerance);
}

TEST_F(ControlPress, IsTheListenersIfItWantsIt) {
    recorder.swallowsModifiedPress = true;
    knob->setValue(0.25F);
    keys.add(ModifierKey::Control);
    EXPECT_TRUE(press(320, 130));
    EXPECT_EQ(knob->getValue(), 0.25F);
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"modifier"}));
}

TEST_F(ControlPress, TellsTheHostNothingOnALabel) {
    frame->addView(new CTextLabel(CRect(0, 0, 88, 20), "Attack"));
    keys.add(ModifierKey::Control);
    EXPECT_TRUE(press(10, 10));
    EXPECT_TRUE(recorder.log.empty());
}

class ControlValue : public KnobTest {};

TEST_F(ControlValue, StaysInItsRangeAndIsKeptExactly) {
    knob->setValue(1.5F);
    EXPECT_EQ(knob->getValue(), 1.F);
    knob->setValue(-3.F);
    EXPECT_EQ(knob->getValue(), 0.F);
    knob->setValue(0.123456F);
    EXPECT_EQ(knob->getValue(), 0.123456F);
    knob->setValue(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(knob->getValue(), 0.F);
    EXPECT_TRUE(recorder.log.empty());
}

TEST_F(ControlValue, MakesTheViewDirtyUntilItIsShown) {
    frame->idle();
    EXPECT_FALSE(knob->isDirty());
    knob->setValue(0.5F);
    EXPECT_TRUE(knob->isDirty());
    frame->idle();
    EXPECT_FALSE(knob->isDirty());
}

TEST_F(ControlValue, MapsBetweenItsRangeAndAFraction) {
    knob->setMin(-10.F);
    knob->setMax(30.F);
    knob->setValueNormalized(0.25F);
    EXPECT_EQ(knob->getValue(), 0.F);
    knob->setValue(20.F);
    EXPECT_EQ(knob->getValueNormalized(), 0.75F);
}

} // namespace
} // namespace VSTGUI::test
