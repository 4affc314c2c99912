// What the window tells the frame. A test may make one and give it to CFrame::dispatchEvent.
#pragma once

#include "vstgui/lib/cbuttonstate.h"
#include "vstgui/lib/cpoint.h"

#include <cstdint>

namespace VSTGUI {

enum class EventType { MouseDown, MouseMove, MouseUp, MouseCancel, MouseWheel };
enum class MouseButton { Left = kLButton, Middle = kMButton, Right = kRButton };
enum class ModifierKey { Shift = kShift, Control = kControl, Alt = kAlt };

// A set of buttons or of modifier keys.
template<class Flag>
class EventFlags {
public:
    void add(Flag flag) { flags |= static_cast<std::int32_t>(flag); }
    void clear() { flags = 0; }
    bool has(Flag flag) const { return (flags & static_cast<std::int32_t>(flag)) != 0; }
    bool empty() const { return flags == 0; }
    std::int32_t bits() const { return flags; } // as in CButtonState

private:
    std::int32_t flags = 0;
};

struct Event {
    EventType type;
    bool consumed = false; // set by the receiver: no other handler needs it

protected:
    explicit Event(EventType type) : type(type) {}
    ~Event() = default;
};

struct MousePositionEvent : Event {
    CPoint mousePosition; // in the frame's coordinates, also where the pointer has left it
    EventFlags<ModifierKey> modifiers;

protected:
    using Event::Event;
    ~MousePositionEvent() = default;
};

struct MouseButtonEvent : MousePositionEvent {
    EventFlags<MouseButton> buttonState; // pressed or released now; during a move: held

    CButtonState buttons() const { return {buttonState.bits() | modifiers.bits()}; }

protected:
    using MousePositionEvent::MousePositionEvent;
    ~MouseButtonEvent() = default;
};

struct MouseDownEvent final : MouseButtonEvent {
    MouseDownEvent() : MouseButtonEvent(EventType::MouseDown) {}

    bool othersAreHeld = false; // another button was pressed before, and not released yet
};

struct MouseMoveEvent final : MouseButtonEvent {
    MouseMoveEvent() : MouseButtonEvent(EventType::MouseMove) {}
};

struct MouseUpEvent final : MouseButtonEvent {
    MouseUpEvent() : MouseButtonEvent(EventType::MouseUp) {}
};

// The pointer was taken away: the release will never come.
struct MouseCancelEvent final : Event {
    MouseCancelEvent() : Event(EventType::MouseCancel) {}
};

struct MouseWheelEvent final : MousePositionEvent {
    MouseWheelEvent() : MousePositionEvent(EventType::MouseWheel) {}

    CCoord deltaX = 0; // notches to the right
    CCoord deltaY = 0; // notches away from the user
};

} // namespace VSTGUI
