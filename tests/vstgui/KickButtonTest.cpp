// Buttons, and classes that derive from them to take the press themselves.
#include "tests/vstgui/Fixtures.h"

namespace VSTGUI::test {
namespace {

constexpr CRect kButtonSize{550, 0, 575, 30};

class KickButton : public KnobTest {
protected:
    KickButton() : kick(new CKickButton(kButtonSize, &recorder, 3, nullptr)) {
        frame->addView(kick);
    }

    CKickButton* kick;
};

TEST_F(KickButton, ReportsOneAndZeroWhenReleasedOverIt) {
    EXPECT_TRUE(press(560, 10));
    EXPECT_EQ(kick->getValue(), 1.F);
    EXPECT_TRUE(release(560, 10));
    EXPECT_EQ(recorder.values, (std::vector<float>{1.F, 0.F}));
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"control begin", "begin 3", "value", "value",
                                                      "end 3", "control end"}));
}

TEST_F(KickButton, ReportsOnlyZeroWhenReleasedElsewhere) {
    press(560, 10);
    move(600, 10);
    EXPECT_EQ(kick->getValue(), 0.F);
    release(600, 10);
    EXPECT_EQ(recorder.values, (std::vector<float>{0.F}));
}

TEST_F(KickButton, IsHitBeforeItsRightAndBottomEdge) {
    EXPECT_TRUE(kick->hitTest({574, 10}));
    EXPECT_TRUE(kick->hitTest({550, 29}));
    EXPECT_FALSE(kick->hitTest({575, 10}));
    EXPECT_FALSE(kick->hitTest({550, 30}));
}

TEST_F(KickButton, KeepsItsEdgesWhileItIsHeld) {
    press(560, 10);
    move(575, 30);
    EXPECT_EQ(kick->getValue(), 1.F);
    move(575.5, 30);
    EXPECT_EQ(kick->getValue(), 0.F);
}

TEST_F(KickButton, IgnoresOtherButtons) {
    button = MouseButton::Right;
    EXPECT_FALSE(press(560, 10));
    EXPECT_TRUE(recorder.log.empty());
}

TEST_F(KickButton, ComesUpWhenTheMouseIsTakenAway) {
    press(560, 10);
    MouseCancelEvent cancel;
    frame->dispatchEvent(cancel);
    EXPECT_EQ(kick->getValue(), 0.F);
    EXPECT_EQ(recorder.values, (std::vector<float>{0.F}));
    EXPECT_FALSE(kick->isEditing());
}

// A button that acts on the release, wherever that is, and begins no gesture.
class ActionButton final : public CKickButton {
public:
    ActionButton(const CRect& size, std::function<void()> action)
        : CKickButton(size, nullptr, 12345, nullptr), action(std::move(action)) {
        setWantsFocus(false);
        setDefaultValue(0.F);
    }

    CMouseEventResult onMouseDown(CPoint&, const CButtonState& buttons) override {
        return buttons.isLeftButton() ? kMouseEventHandled : kMouseEventNotHandled;
    }
    CMouseEventResult onMouseUp(CPoint&, const CButtonState&) override {
        action();
        return kMouseEventHandled;
    }

protected:
    ~ActionButton() override = default;

private:
    std::function<void()> action;
};

class DerivedButton : public KnobTest {};

TEST_F(DerivedButton, ActsOnAReleaseOutsideAndTellsTheHostNothing) {
    int actions = 0;
    auto* action = new ActionButton(kButtonSize, [&] { ++actions; });
    frame->addView(action);
    press(560, 10);
    move(800, 600);
    release(800, 600);
    EXPECT_EQ(actions, 1);
    EXPECT_EQ(action->getValue(), 0.F);
    EXPECT_FALSE(action->isEditing());
    EXPECT_TRUE(recorder.log.empty());
}

TEST_F(DerivedButton, TakesNoActionOnAPressWithControl) {
    int actions = 0;
    frame->addView(new ActionButton(kButtonSize, [&] { ++actions; }));
    keys.add(ModifierKey::Control);
    EXPECT_TRUE(press(560, 10));
    release(560, 10);
    EXPECT_EQ(actions, 0);
    EXPECT_TRUE(recorder.log.empty());
}

TEST_F(DerivedButton, MayRemoveItselfInItsOwnRelease) {
    CView* overlay = nullptr;
    overlay = new ActionButton(kFrameSize, [&] { frame->removeView(overlay); });
    frame->addView(overlay);
    EXPECT_EQ(frame->getNbViews(), 2U);
    press(320, 110);
    EXPECT_TRUE(release(320, 110));
    EXPECT_EQ(frame->getNbViews(), 1U);
    // The knob below is free again.
    EXPECT_NEAR(drag({320, 110}, {340, 130}), 0.8333333F, 1e-6F);
}

TEST_F(DerivedButton, CoversWhatLiesBelow) {
    frame->addView(new ActionButton(kFrameSize, [] {}));
    EXPECT_FALSE(wheel(1));
    EXPECT_EQ(drag({320, 110}, {340, 130}), 0.F);
    EXPECT_TRUE(recorder.log.empty());
}

TEST_F(DerivedButton, MayCloseTheFrameInItsOwnRelease) {
    auto* closing = new CFrame(kFrameSize, nullptr);
    closing->addView(new ActionButton(kFrameSize, [&] { closing->close(); }));
    MouseDownEvent down;
    down.mousePosition = CPoint(5, 5);
    down.buttonState.add(MouseButton::Left);
    closing->dispatchEvent(down);
    MouseUpEvent up;
    up.mousePosition = down.mousePosition;
    up.buttonState = down.buttonState;
    // Under the address sanitizer this shows any later use of the frame.
    closing->dispatchEvent(up);
    EXPECT_TRUE(up.consumed);
}

} // namespace
} // namespace VSTGUI::test
