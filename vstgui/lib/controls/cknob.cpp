#include "vstgui/lib/controls/cknob.h"

#include "vstgui/lib/cframe.h"
#include "vstgui/lib/events.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace VSTGUI {
namespace {

using std::numbers::pi;

// The knob turns over three quarters of a circle from lower left, the gap is at the bottom; angles
// run clockwise from the right. Floats, which the arithmetic takes in double: hosts that have
// recorded a drag find the same values to the last bit.
constexpr auto kStartAngle = static_cast<float>(0.75 * pi);
constexpr auto kRangeAngle = static_cast<float>(1.5 * pi);
constexpr double kUpAngle = kStartAngle + static_cast<double>(kRangeAngle) / 2;
// Of the range, for one pixel along the line: 200 pixels, and half as many more with Shift held.
constexpr float kLineStep = 1.F / 200.F;
constexpr float kFineLineStep = 1.F / 300.F;
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
    // From straight up, and straight down, where the rounded angles leave a trace of the circle,
    // belongs to the upper end.
    double angle = std::atan2(fromCentre.y, fromCentre.x) - kUpAngle;
    if (angle < -pi) {
        angle += 2 * pi;
    }
    return static_cast<float>(std::clamp(0.5 + angle / static_cast<double>(kRangeAngle), 0.0, 1.0));
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
    const double step = drag->buttons.isShiftSet() ? kFineLineStep : kLineStep;
    const auto target =
        static_cast<float>(std::clamp(drag->anchorValue + (way.x - way.y) * step, 0.0, 1.0));
    if (buttons.getModifierState() != drag->buttons.getModifierState()) {
        drag->anchor = where;
        drag->anchorValue = target;
        drag->buttons = buttons;
    }
    return target;
}

// Sets what the user has moved to, unless it is what is seen: then a value that the host has set
// meanwhile, and that is not drawn yet, stays.
void CKnobBase::setUserValue(float fraction) {
    const float target = getMin() + fraction * (getMax() - getMin());
    if (target == getOldValue()) {
        return;
    }
    setValue(target);
    valueChanged();
    if (isDirty()) {
        invalid();
    }
}

CMouseEventResult CKnobBase::onMouseDown(CPoint& where, const CButtonState& buttons) {
    if (!buttons.isLeftButton()) {
        return kMouseEventNotHandled;
    }
    endWheel();
    drag = Drag{isCircular(buttons),
                getValueNormalized(),
                where,
                valueAt(where),
                where,
                getValueNormalized(),
                buttons};
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
    setUserValue(drag->circular ? circularValue(where) : lineValue(where, buttons));
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
    const Drag cancelled = *drag;
    drag.reset();
    // Around the knob the value is where the pointer is, and stays.
    if (!cancelled.circular) {
        setUserValue(cancelled.fractionBefore);
    }
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
    const double index = std::floor(static_cast<double>(fractionToDraw()) * lastIndex);
    getBackground()->draw(context, getViewSize(), {0, index * heightOfOneImage});
}

} // namespace VSTGUI
