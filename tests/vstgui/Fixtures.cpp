#include "tests/vstgui/Fixtures.h"

#include <thread>

namespace VSTGUI::test {

KnobTest::KnobTest() : frame(new CFrame(kFrameSize, &recorder)) {
    CBitmap* strip = makeStrip();
    knob = new CAnimKnob(kKnobSize, &recorder, 0, 30, 48, strip);
    strip->forget();
    frame->addView(knob);
}

KnobTest::~KnobTest() {
    frame->forget();
}

bool KnobTest::press(double x, double y) {
    MouseDownEvent event;
    event.mousePosition = CPoint(x, y);
    event.modifiers = keys;
    event.buttonState.add(button);
    frame->dispatchEvent(event);
    return event.consumed;
}

bool KnobTest::pressToo(MouseButton other) {
    MouseDownEvent event;
    event.mousePosition = kKnobSize.getCenter();
    event.modifiers = keys;
    event.buttonState.add(other);
    event.othersAreHeld = true;
    frame->dispatchEvent(event);
    return event.consumed;
}

void KnobTest::show(float value) {
    knob->setValue(value);
    frame->idle();
}

bool KnobTest::move(double x, double y) {
    MouseMoveEvent event;
    event.mousePosition = CPoint(x, y);
    event.modifiers = keys;
    event.buttonState.add(button);
    frame->dispatchEvent(event);
    return event.consumed;
}

bool KnobTest::release(double x, double y) {
    MouseUpEvent event;
    event.mousePosition = CPoint(x, y);
    event.modifiers = keys;
    event.buttonState.add(button);
    frame->dispatchEvent(event);
    return event.consumed;
}

bool KnobTest::wheel(double deltaY, double deltaX) {
    MouseWheelEvent event;
    event.mousePosition = kKnobSize.getCenter();
    event.modifiers = keys;
    event.deltaX = deltaX;
    event.deltaY = deltaY;
    frame->dispatchEvent(event);
    return event.consumed;
}

float KnobTest::drag(const CPoint& from, const CPoint& to) {
    press(from.x, from.y);
    move(to.x, to.y);
    release(to.x, to.y);
    return knob->getValue();
}

void WindowTest::SetUp() {
    if (const std::string why = XServer::start(); !why.empty()) {
        GTEST_SKIP() << why;
    }
}

CFrame* WindowTest::openFrame(HostWindow& host) {
    auto* frame = new CFrame(kFrameSize, &recorder);
    frame->setBackgroundColor(kRedCColor);
    EXPECT_TRUE(frame->open(host.handle()));
    return frame;
}

CAnimKnob* WindowTest::addKnob(CFrame& frame) {
    CBitmap* strip = makeStrip();
    auto* knob = new CAnimKnob(kKnobSize, &recorder, 7, 30, 48, strip);
    strip->forget();
    frame.addView(knob);
    return knob;
}

bool WindowTest::idleUntil(CFrame& frame, const std::function<bool()>& isReached, int hz) {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (std::chrono::steady_clock::now() < limit) {
        frame.idle();
        if (isReached()) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::microseconds(1000000 / hz));
    }
    return false;
}

bool WindowTest::isDrawn(CFrame& frame, const HostWindow& host, int x, int y, const CColor& color) {
    const auto wanted =
        static_cast<Pixel>(color.red) << 16 | static_cast<Pixel>(color.green) << 8 | color.blue;
    return idleUntil(frame, [&] { return host.pixel(x, y) == wanted; });
}

} // namespace VSTGUI::test
