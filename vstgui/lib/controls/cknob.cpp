#include "vstgui/lib/controls/cknob.h"

#include "vstgui/lib/cframe.h"
#include "vstgui/lib/events.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace VSTGUI {
namespace {

using std::numbers::pi;

// The knob turns over three quarters of a circle; the gap is at the bottom.
constexpr double kRangeAngle = 1.5 * pi;
// Pixels along the line for the whole range, and with Shift held.
constexpr double kLineRange = 200;
constexpr double kFineLineRange = 1.5 * kLineRange;
// Of the range, for one notch of the wheel.
constexpr float kWheelStep = 0.1F;
constexpr float kFineWheelStep = 0.01F;
// Notches further apart are gestures of their own.
constexpr std::chrono::milliseconds kWheelPause{500};

} // namespace

bool CKnobBase::isCircular(const CButtonState& buttons) const {
    const std::int32_t mode = getFrame() ? getFrame()->getKnobMode() : CFrame::kDefaultKnobMode;
    return (mode != kLinearMode) != buttons.isAltSet();
}

// The value that points at `where`, a fraction of the range: 0.5 straight up.
float CKnobBase::valueAt(const CPoint& where) const {
    const CPoint fromCentre = where - getViewSize().getCenter();
    // Clockwise from straight up, and straight down is reached from the left: it belongs to the
    // upper end.
    double angle = std::atan2(fromCentre.y, fromCentre.x) + pi / 2;
    if (angle > pi) {
        angle -= 2 * pi;
    }
    return static_cast<float>(std::clamp(0.5 + angle / kRangeAngle, 0.0, 1.0));
}

// A drag through the gap at the bottom would throw the knob from one end to the other: it stays at
// the end where it is.
float CKnobBase::circularValue(const CPoint& where) {
    const float target = valueAt(where);
    if (drag->reference - target > 0.5F) {
        return 1.F;
    }
    if (target - drag->reference > 0.5F) {
        return 0.F;
    }
    drag->reference = target;
    return target;
}

// Measured from the anchor, not step by step, so that a pointer that comes back brings the value
// back with it. A change of the keys sets a new anchor: the value does not jump.
float CKnobBase::lineValue(const CPoint& where, const CButtonState& buttons) {
    const CPoint way = where - drag->anchor;
    const double range = drag->buttons.isShiftSet() ? kFineLineRange : kLineRange;
    const auto target =
        static_cast<float>(std::clamp(drag->anchorValue + (way.x - way.y) / range, 0.0, 1.0));
    if (buttons.getModifierState() != drag->buttons.getModifierState()) {
        drag->anchor = where;
        drag->anchorValue = target;
        drag->buttons = buttons;
    }
    return target;
}

// After the user may have changed the value from `before`.
void CKnobBase::showUserValue(float before) {
    if (getValue() != before) {
        valueChanged();
    }
    if (isDirty()) {
        invalid();
    }
}

CMouseEventResult CKnobBase::onMouseDown(CPoint& where, const CButtonState& buttons) {
    if (!buttons.isLeftButton()) {
        return kMouseEventNotHandled;
    }
    endWheel();
    drag = Drag{isCircular(buttons),  getValue(), where, valueAt(where), where,
                getValueNormalized(), buttons};
    beginEdit();
    return kMouseEventHandled;
}

CMouseEventResult CKnobBase::onMouseMoved(CPoint& where, const CButtonState& buttons) {
    if (!drag) {
        return kMouseEventNotHandled;
    }
    if (where == drag->last) {
        return kMouseEventHandled;
    }
    drag->last = where;
    const float before = getValue();
    setValueNormalized(drag->circular ? circularValue(where) : lineValue(where, buttons));
    showUserValue(before);
    return kMouseEventHandled;
}

CMouseEventResult CKnobBase::onMouseUp(CPoint&, const CButtonState&) {
    if (!drag) {
        return kMouseEventNotHandled;
    }
    drag.reset();
    endEdit();
    return kMouseEventHandled;
}

CMouseEventResult CKnobBase::onMouseCancel() {
    if (!drag) {
        return kMouseEventNotHandled;
    }
    const float before = getValue();
    setValue(drag->valueBefore);
    drag.reset();
    showUserValue(before);
    endEdit();
    return kMouseEventHandled;
}

void CKnobBase::onMouseWheelEvent(MouseWheelEvent& event) {
    event.consumed = true;
    if (!wheelEnd) {
        beginEdit();
    }
    wheelEnd = Clock::now() + kWheelPause;
    const float step = event.modifiers.has(ModifierKey::Shift) ? kFineWheelStep : kWheelStep;
    const float before = getValue();
    setValueNormalized(getValueNormalized() + static_cast<float>(event.deltaY) * step);
    if (getValue() != before) {
        invalid();
        valueChanged();
    }
}

void CKnobBase::onIdle(Clock::time_point now) {
    if (wheelEnd && now >= *wheelEnd) {
        endWheel();
    }
}

void CKnobBase::endWheel() {
    if (wheelEnd) {
        wheelEnd.reset();
        endEdit();
    }
}

void CKnobBase::setFrame(CFrame* newFrame) {
    CControl::setFrame(newFrame);
    drag.reset();
    wheelEnd.reset();
}

CAnimKnob::CAnimKnob(const CRect& size, IControlListener* listener, std::int32_t tag,
                     CBitmap* background)
    : CAnimKnob(size, listener, tag, 0, size.getHeight(), background) {}

CAnimKnob::CAnimKnob(const CRect& size, IControlListener* listener, std::int32_t tag,
                     std::int32_t /*subPixmaps*/, CCoord heightOfOneImage, CBitmap* background,
                     const CPoint& /*offset*/)
    : CKnobBase(size, listener, tag, background), heightOfOneImage(heightOfOneImage) {}

void CAnimKnob::draw(CDrawContext* context) {
    if (!getBackground()) {
        return;
    }
    // The last picture is for the upper end alone: the index is rounded down.
    const double lastIndex = std::floor(getBackground()->getHeight() / heightOfOneImage) - 1;
    const double index = std::floor(static_cast<double>(getValueNormalized()) * lastIndex);
    getBackground()->draw(context, getViewSize(), {0, index * heightOfOneImage});
}

} // namespace VSTGUI
