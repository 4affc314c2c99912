// What the tests start from.
#pragma once

#include "tests/vstgui/HostWindow.h"
#include "tests/vstgui/Pictures.h"
#include "tests/vstgui/Recorder.h"
#include "tests/vstgui/XServer.h"

#include "vstgui/lib/vstguiinit.h"

#include <gtest/gtest.h>

#include <functional>

namespace VSTGUI::test {

inline constexpr CRect kFrameSize{0, 0, 717, 477};
// Centre (320, 130).
inline constexpr CRect kKnobSize{296, 106, 344, 154};

// The toolkit is started; there is no window.
class ToolkitTest : public testing::Test {
protected:
    ToolkitTest() { init(nullptr); }
    ~ToolkitTest() override { exit(); }
};

// A frame without a window, and a knob in it that is turned by events from the test.
class KnobTest : public ToolkitTest {
protected:
    KnobTest();
    ~KnobTest() override;

    // Each returns whether the event was consumed.
    bool press(double x, double y);
    // On the knob, with another button held already.
    bool pressToo(MouseButton other);
    bool move(double x, double y);
    bool release(double x, double y);
    bool wheel(double deltaY, double deltaX = 0);
    // Press, one move, release. Returns the value after it.
    float drag(const CPoint& from, const CPoint& to);
    // The host sets a value, and it is drawn.
    void show(float value);

    Recorder recorder;
    CFrame* frame;
    CAnimKnob* knob;
    EventFlags<ModifierKey> keys;           // held
    MouseButton button = MouseButton::Left; // pressed and released
};

// An X server and a host's window on it.
class WindowTest : public ToolkitTest {
protected:
    void SetUp() override;

    // A frame with the host's window as its parent, open; the pointer is the caller's.
    CFrame* openFrame(HostWindow& host);
    // A knob of the strip in `frame`, with tag 7.
    CAnimKnob* addKnob(CFrame& frame);
    // Idles the frame `hz` times a second until `isReached`. Returns whether it was, in ten
    // seconds.
    static bool idleUntil(CFrame& frame, const std::function<bool()>& isReached, int hz = 60);
    // Idles until the frame's window shows `color` at (x, y).
    static bool isDrawn(CFrame& frame, const HostWindow& host, int x, int y, const CColor& color);

    Recorder recorder;
};

} // namespace VSTGUI::test
