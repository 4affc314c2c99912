// How a drag turns a knob. The expected values follow from the geometry:
// three quarters of a circle for the whole range, or 200 pixels along a line.
#include "tests/vstgui/Fixtures.h"

namespace VSTGUI::test {
namespace {

constexpr float kTolerance = 1e-6F;

struct Turn {
    CPoint to;
    float value;
};

class KnobDrag : public KnobTest {};

TEST_F(KnobDrag, PointsWhereTheMouseIsSeenFromTheCentre) {
    const Turn turns[] = {
        {{304, 146}, 0.F},        {{303, 130}, 0.1666667F}, {{304, 114}, 0.3333333F},
        {{336, 114}, 0.6666667F}, {{340, 130}, 0.8333333F}, {{336, 146}, 1.F},
        {{900, 130}, 0.8333333F}, {{900, 700}, 0.9981548F}, {{320, 130}, 0.8333333F},
    };
    for (const auto& [to, value] : turns) {
        show(0.25F);
        EXPECT_NEAR(drag({320, 110}, to), value, kTolerance) << to.x << ", " << to.y;
    }
}

TEST_F(KnobDrag, DividesTheGapAtTheBottomInTheMiddle) {
    const Turn turns[] = {{{320, 150}, 1.F},
                          {{319, 150}, 0.F},
                          {{310, 150}, 0.F},
                          {{321, 150}, 1.F},
                          {{330, 150}, 1.F}};
    for (const auto& [to, value] : turns) {
        show(0.25F);
        EXPECT_NEAR(drag({320, 110}, to), value, kTolerance) << to.x << ", " << to.y;
    }
}

TEST_F(KnobDrag, LeavesTheValueAloneUntilTheMouseMoves) {
    knob->setValue(0.25F);
    press(330, 130);
    move(330, 130);
    release(330, 130);
    EXPECT_EQ(knob->getValue(), 0.25F);
    EXPECT_EQ(recorder.log,
              (std::vector<std::string>{"control begin", "begin 0", "end 0", "control end"}));
}

TEST_F(KnobDrag, StaysAtItsEndWhenTheMouseJumpsAcrossTheGap) {
    const Turn path[] = {{{303, 146}, 0.0064285F}, {{336, 146}, 0.F},        {{320, 110}, 0.5F},
                         {{336, 146}, 1.F},        {{320, 150}, 1.F},        {{304, 146}, 1.F},
                         {{320, 110}, 0.5F},       {{1000, 130}, 0.8333333F}};
    press(304, 146);
    for (const auto& [to, value] : path) {
        move(to.x, to.y);
        EXPECT_NEAR(knob->getValue(), value, kTolerance) << to.x << ", " << to.y;
    }
}

TEST_F(KnobDrag, TellsTheGestureOnceAroundTheChanges) {
    press(320, 110);
    move(336, 114);
    move(336, 114); // the same place
    move(352, 98);  // the same angle: the same value
    move(340, 130);
    release(340, 130);
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"control begin", "begin 0", "value", "value",
                                                      "end 0", "control end"}));
    EXPECT_FALSE(knob->isEditing());
}

TEST_F(KnobDrag, IgnoresOtherButtonsThanTheLeft) {
    for (const MouseButton other : {MouseButton::Right, MouseButton::Middle}) {
        button = other;
        EXPECT_FALSE(press(320, 110));
        EXPECT_FALSE(move(336, 114));
        EXPECT_FALSE(release(336, 114));
    }
    EXPECT_TRUE(recorder.log.empty());
}

TEST_F(KnobDrag, EndsWithTheReleaseOfAnyButton) {
    press(320, 110);
    button = MouseButton::Right;
    EXPECT_TRUE(release(320, 110));
    EXPECT_EQ(recorder.count("end 0"), 1);
    button = MouseButton::Left;
    EXPECT_FALSE(move(336, 114));
    EXPECT_EQ(knob->getValue(), 0.F);
}

// Round the knob the value is where the pointer is: the user sees it, and keeps it.
TEST_F(KnobDrag, EndsWhereItIsWhenASecondButtonIsPressed) {
    show(0.25F);
    press(320, 110);
    move(336, 114);
    pressToo(MouseButton::Right);
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"control begin", "begin 0", "value", "end 0",
                                                      "control end"}));
    EXPECT_NEAR(knob->getValue(), 0.6666667F, kTolerance);
    EXPECT_FALSE(move(304, 114));
    EXPECT_FALSE(release(304, 114));
    EXPECT_NEAR(knob->getValue(), 0.6666667F, kTolerance);
}

TEST_F(KnobDrag, MovesNothingWhileAnotherButtonIsHeldAlready) {
    for (const MouseButton other : {MouseButton::Right, MouseButton::Middle}) {
        show(0.25F);
        recorder.log.clear();
        button = other;
        EXPECT_FALSE(press(320, 110));
        button = MouseButton::Left;
        pressToo(MouseButton::Left);
        EXPECT_FALSE(move(336, 114));
        EXPECT_FALSE(release(336, 114));
        EXPECT_EQ(knob->getValue(), 0.25F);
        EXPECT_EQ(recorder.log,
                  (std::vector<std::string>{"control begin", "begin 0", "end 0", "control end"}));
    }
}

// The release of the first press was lost; its drag ends, and the new one is a drag like any other.
TEST_F(KnobDrag, BeginsAnewWithAPressThatFindsNoOtherButtonHeld) {
    press(320, 110);
    press(320, 110);
    EXPECT_EQ(recorder.count("end 0"), 1);
    move(336, 114);
    EXPECT_NEAR(knob->getValue(), 0.6666667F, kTolerance);
    EXPECT_TRUE(release(336, 114));
    EXPECT_EQ(recorder.count("end 0"), 2);
}

TEST_F(KnobDrag, StaysWhereItIsWhenItIsCancelled) {
    show(0.25F);
    press(320, 110);
    move(336, 114);
    MouseCancelEvent cancel;
    frame->dispatchEvent(cancel);
    EXPECT_NEAR(knob->getValue(), 0.6666667F, kTolerance);
    EXPECT_EQ(recorder.log.back(), "control end");
    EXPECT_EQ(recorder.count("value"), 1);
    EXPECT_FALSE(release(336, 114));
}

// The user, who sees 0.5, has moved to 0.5: that is no wish to undo what the host has set
// meanwhile.
TEST_F(KnobDrag, LeavesAValueOfTheHostsAloneWhenTheMouseComesBackBeforeItIsDrawn) {
    show(0.5F);
    press(320, 110);
    knob->setValue(0.9F);
    move(320, 90); // straight up, as before
    EXPECT_EQ(recorder.count("value"), 0);
    EXPECT_EQ(knob->getValue(), 0.9F);
    frame->idle(); // now it is drawn, and the same way is a change
    move(320, 80);
    EXPECT_EQ(recorder.count("value"), 1);
    EXPECT_EQ(knob->getValue(), 0.5F);
}

// The circle's angles are floats, the arithmetic with them is in double: start = float (3/4 pi),
// range = float (3/2 pi), value = 0.5 + (atan2 - (start + range / 2)) / range, computed elsewhere.
// With the angles themselves in double the last bit of each of these would be another.
TEST_F(KnobDrag, RoundsItsAnglesAsTheToolkitsDo) {
    const Turn turns[] = {
        {{-18, 17}, 0x1.8d3d56p-8F},  {{-2, -15}, 0x1.e33254p-2F}, {{-5, 4}, 0x1.80bb72p-6F},
        {{-21, -12}, 0x1.1b7a14p-2F}, {{-13, 1}, 0x1.33f7e4p-3F},  {{-9, 5}, 0x1.e3cb8cp-5F},
        {{6, -3}, 0x1.784a9cp-1F},
    };
    for (const auto& [fromCentre, value] : turns) {
        show(0.25F);
        EXPECT_EQ(drag({320, 110}, CPoint(320, 130) + fromCentre), value)
            << fromCentre.x << ", " << fromCentre.y;
    }
}

TEST_F(KnobDrag, EndsItsGestureWhenTheKnobIsTakenAway) {
    press(320, 110);
    move(336, 114);
    frame->removeView(knob);
    EXPECT_EQ(recorder.count("end 0"), 1);
    EXPECT_EQ(recorder.count("control end"), 1);
    EXPECT_EQ(recorder.count("value"), 1);
    EXPECT_FALSE(move(320, 110));
    EXPECT_FALSE(release(320, 110));
}

class KnobLine : public KnobTest {
protected:
    KnobLine() {
        recorder.knobMode = kLinearMode;
        show(0.5F);
    }
};

TEST_F(KnobLine, CountsPixelsUpAndRight) {
    press(320, 130);
    move(320, 110);
    EXPECT_NEAR(knob->getValue(), 0.6F, kTolerance);
    move(330, 110);
    EXPECT_NEAR(knob->getValue(), 0.65F, kTolerance);
}

TEST_F(KnobLine, ReturnsToItsStartWhenASecondButtonIsPressed) {
    press(320, 130);
    move(320, 110);
    pressToo(MouseButton::Middle);
    EXPECT_EQ(knob->getValue(), 0.5F);
    EXPECT_EQ(recorder.values.back(), 0.5F);
    EXPECT_EQ(recorder.log.back(), "control end");
    EXPECT_FALSE(move(320, 100));
    EXPECT_EQ(knob->getValue(), 0.5F);
}

// Pixels are multiplied by the float of 1/200, and with Shift by that of 1/300, both a little off:
// 0.5 + 19 x 0.00499999988824... is 0.594999997876..., and float rounds it down to the first value;
// 0.5 + 19 / 200 = 0.595 would be rounded up to the next.
TEST_F(KnobLine, RoundsItsRateAsTheToolkitsDo) {
    press(320, 130);
    move(320, 111);
    EXPECT_EQ(knob->getValue(), 0x1.30a3d6p-1F);
    move(320, 98); // 32
    EXPECT_EQ(knob->getValue(), 0x1.51eb84p-1F);
    release(320, 98);
    show(0.5F);
    keys.add(ModifierKey::Shift);
    press(320, 130);
    move(320, 102); // 28
    EXPECT_EQ(knob->getValue(), 0x1.2fc964p-1F);
    move(320, 84); // 46
    EXPECT_EQ(knob->getValue(), 0x1.4e81b6p-1F);
}

TEST_F(KnobLine, ChangesItsRateWithShiftButDoesNotJump) {
    press(320, 130);
    move(330, 110);
    keys.add(ModifierKey::Shift);
    move(330, 110);
    EXPECT_NEAR(knob->getValue(), 0.65F, kTolerance);
    move(330, 100);
    EXPECT_NEAR(knob->getValue(), 0.7F, kTolerance);
    keys.clear();
    move(330, 90);
    EXPECT_NEAR(knob->getValue(), 0.7333333F, kTolerance);
}

TEST_F(KnobLine, IsFineWithShiftFromTheStart) {
    keys.add(ModifierKey::Shift);
    press(320, 130);
    move(320, 100);
    EXPECT_NEAR(knob->getValue(), 0.6F, kTolerance);
}

TEST_F(KnobLine, ComesBackFromBeyondItsEnd) {
    keys.add(ModifierKey::Shift);
    press(320, 130);
    move(320, -400);
    EXPECT_EQ(knob->getValue(), 1.F);
    move(320, 100);
    EXPECT_NEAR(knob->getValue(), 0.6F, kTolerance);
}

TEST_F(KnobLine, IsACircleWithAlt) {
    keys.add(ModifierKey::Alt);
    EXPECT_NEAR(drag({320, 110}, {340, 130}), 0.8333333F, kTolerance);
}

TEST_F(KnobDrag, IsALineWithAlt) {
    keys.add(ModifierKey::Alt);
    show(0.5F);
    EXPECT_EQ(drag({320, 130}, {320, 330}), 0.F);
}

TEST_F(KnobDrag, IsTheSameInTheRelativeCircle) {
    recorder.knobMode = kRelativCircularMode;
    EXPECT_NEAR(drag({320, 110}, {340, 130}), 0.8333333F, kTolerance);
}

} // namespace
} // namespace VSTGUI::test
