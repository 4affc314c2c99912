// The user turns knobs on Windows: what the host hears, and what it keeps.
#include "tests/windows/EditorFixture.h"

#include <gmock/gmock.h>

namespace zelvatone::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WindowsKnob : public WindowsEditor {
protected:
    // Presses above the knob's centre and turns it a third of its range to the right.
    void beginDrag() const {
        window.press(kKnobX, kKnobY - 20);
        window.move(kKnobX + 20, kKnobY);
    }
};

TEST_F(WindowsKnob, TurnsWithADragAndTellsOneGesture) {
    beginDrag();
    window.release(kKnobX + 20, kKnobY);
    idle();
    EXPECT_THAT(edits(), ElementsAre("begin 20", "20 = 0.8333", "end 20"));
}

TEST_F(WindowsKnob, LetsGoWhenAnotherButtonIsPressed) {
    beginDrag();
    window.press(kKnobX, kKnobY, MK_LBUTTON | MK_RBUTTON);
    window.move(kKnobX - 20, kKnobY);
    window.release(kKnobX - 20, kKnobY);
    idle();
    EXPECT_THAT(edits(), ElementsAre("begin 20", "20 = 0.8333", "end 20"));
}

TEST_F(WindowsKnob, HoldsTheMouseForTheTimeOfADrag) {
    EXPECT_EQ(GetCapture(), nullptr);
    beginDrag();
    EXPECT_EQ(GetCapture(), window.editor());
    // Straight up, far above the window, in the message's signed 16 bits.
    window.move(kKnobX, -600);
    window.release(kKnobX, -600);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_THAT(edits(), ElementsAre("begin 20", "20 = 0.8333", "20 = 0.5000", "end 20"));
}

TEST_F(WindowsKnob, TurnsWithTheWheelAndTellsOneGesture) {
    plugin.setParameter(kSustain, 0.5F);
    window.wheel(kKnobX, kKnobY, 1);
    window.wheel(kKnobX, kKnobY, 2);
    window.wheel(kKnobX, kKnobY, -1);
    EXPECT_THAT(edits(), ElementsAre("begin 20", "20 = 0.6000", "20 = 0.8000", "20 = 0.7000"));
    for (int turn = 0; turn < 100 && edits().size() < 5; ++turn) {
        Sleep(20); // the gesture ends half a second after the last notch
        idle();
    }
    EXPECT_EQ(edits().back(), "end 20");
}

TEST_F(WindowsKnob, TurnsInSmallStepsWithTheWheelAndShift) {
    plugin.setParameter(kSustain, 0.5F);
    window.wheel(kKnobX, kKnobY, 1, MK_SHIFT);
    EXPECT_THAT(edits(), ElementsAre("begin 20", "20 = 0.5100"));
}

TEST_F(WindowsKnob, GoesToItsMiddleWithCtrlAndAClick) {
    window.press(kKnobX, kKnobY, MK_LBUTTON | MK_CONTROL);
    window.release(kKnobX, kKnobY, MK_CONTROL);
    EXPECT_THAT(edits(), ElementsAre("begin 20", "20 = 0.5000", "end 20"));
}

TEST_F(WindowsKnob, IgnoresTheRightButton) {
    window.press(kKnobX, kKnobY - 20, MK_RBUTTON);
    window.move(kKnobX + 20, kKnobY, MK_RBUTTON);
    window.release(kKnobX + 20, kKnobY);
    EXPECT_THAT(edits(), IsEmpty());
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(WindowsKnob, EndsItsDragWhenAnotherWindowTakesTheMouse) {
    beginDrag();
    SetCapture(window.handle());
    idle();
    EXPECT_THAT(edits(), ElementsAre("begin 20", "20 = 0.8333", "end 20"));
    EXPECT_EQ(GetCapture(), window.handle());
    ReleaseCapture();
    window.move(kKnobX, kKnobY - 20, 0);
    EXPECT_EQ(edits().size(), 3U);
}

TEST_F(WindowsKnob, EndsItsDragWhenTheHostHidesItsWindow) {
    beginDrag();
    ShowWindow(window.handle(), SW_HIDE);
    idle();
    EXPECT_THAT(edits(), ElementsAre("begin 20", "20 = 0.8333", "end 20"));
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(WindowsKnob, EndsItsDragWhenTheHostDestroysItsWindow) {
    beginDrag();
    DestroyWindow(window.handle());
    EXPECT_EQ(edits().back(), "end 20");
    idle();
    plugin.ask(effEditClose);
}

TEST_F(WindowsKnob, EndsItsDragWhenTheEditorIsClosed) {
    beginDrag();
    plugin.ask(effEditClose);
    EXPECT_THAT(edits(), ElementsAre("begin 20", "20 = 0.8333", "end 20"));
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_NEAR(plugin.getParameter(kSustain), 0.8333, 0.0001);
}

TEST_F(WindowsKnob, LetsTheHostCloseTheEditorInTheMiddleOfADrag) {
    host.onCall = [this](const HostCall& call) {
        if (call.opcode == audioMasterAutomate) {
            plugin.ask(effEditClose);
        }
    };
    beginDrag();
    host.onCall = nullptr;
    EXPECT_EQ(window.children(), 0);
    EXPECT_EQ(edits().back(), "end 20");
}

// The pointer itself, as a user moves it.
class WindowsPointer : public WindowsEditor {
protected:
    void point(int x, int y) const {
        POINT place{x, y};
        ClientToScreen(window.handle(), &place);
        SetCursorPos(place.x, place.y);
        act(MOUSEEVENTF_MOVE);
    }
    void act(DWORD flags, int amount = 0) const {
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = flags;
        input.mi.mouseData = static_cast<DWORD>(amount);
        SendInput(1, &input, sizeof input);
        for (int turn = 0; turn < 5; ++turn) { // Windows brings it when it likes
            Sleep(10);
            idle();
        }
    }
};

TEST_F(WindowsPointer, TurnsAKnobAlsoWhenItLeavesTheWindow) {
    point(kKnobX, kKnobY - 20);
    act(MOUSEEVENTF_LEFTDOWN);
    point(kKnobX, -60); // straight up
    point(kKnobX + 300, kKnobY);
    act(MOUSEEVENTF_LEFTUP);
    point(kKnobX, kKnobY - 20);
    EXPECT_THAT(edits(), ElementsAre("begin 20", "20 = 0.5000", "20 = 0.8333", "end 20"));
}

TEST_F(WindowsPointer, TurnsTheKnobBelowItWithItsWheel) {
    plugin.setParameter(kSustain, 0.5F);
    point(kKnobX, kKnobY);
    act(MOUSEEVENTF_WHEEL, WHEEL_DELTA);
    EXPECT_THAT(edits(), ElementsAre("begin 20", "20 = 0.6000"));
}

TEST_F(WindowsPointer, LeavesTheKeyboardToTheHost) {
    SetFocus(window.handle());
    point(kKnobX, kKnobY);
    act(MOUSEEVENTF_LEFTDOWN);
    act(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ(GetFocus(), window.handle());
    INPUT key{};
    key.type = INPUT_KEYBOARD;
    key.ki.wVk = VK_SPACE;
    SendInput(1, &key, sizeof key);
    for (int turn = 0; turn < 50 && window.keysHeard == 0; ++turn) {
        Sleep(10);
        idle();
    }
    EXPECT_EQ(window.keysHeard, 1);
}

} // namespace
} // namespace zelvatone::test
