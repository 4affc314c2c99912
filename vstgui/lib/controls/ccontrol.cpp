#include "vstgui/lib/controls/ccontrol.h"

#include "vstgui/lib/cframe.h"

namespace VSTGUI {

CControl::CControl(const CRect& size, IControlListener* listener, std::int32_t tag,
                   CBitmap* background)
    : CView(size), listener(listener), tag(tag) {
    setBackground(background);
}

void CControl::setValue(float newValue) {
    // Only what compares as larger gets past the lower end: not a number does not.
    const float raised = newValue > minimum ? newValue : minimum;
    value.store(raised < maximum ? raised : maximum, std::memory_order_relaxed);
}

void CControl::setValueNormalized(float fraction) {
    setValue(minimum + fraction * (maximum - minimum));
}

float CControl::getValueNormalized() const {
    return (getValue() - minimum) / (maximum - minimum);
}

bool CControl::isDirty() const {
    return CView::isDirty() || getValue() != shownValue;
}

void CControl::setDirty(bool state) {
    CView::setDirty(state);
    if (!state) {
        shownValue = getValue();
    }
}

float CControl::fractionToDraw() {
    const float drawn = getValue();
    if (drawn != shownValue) {
        setDirty();
    }
    return (drawn - minimum) / (maximum - minimum);
}

void CControl::valueChanged() {
    if (listener) {
        listener->valueChanged(this);
    }
}

void CControl::beginEdit() {
    if (openEdits++ > 0 || !listener) {
        return;
    }
    listener->controlBeginEdit(this);
    if (getFrame()) {
        getFrame()->beginEdit(tag);
    }
}

void CControl::endEdit() {
    if (openEdits == 0 || --openEdits > 0 || !listener) {
        return;
    }
    if (getFrame()) {
        getFrame()->endEdit(tag);
    }
    listener->controlEndEdit(this);
}

bool CControl::takeModifiedPress(const CButtonState& buttons) {
    const std::int32_t modifiers = buttons.getModifierState();
    if (modifiers != 0 && listener && listener->controlModifierClicked(this, buttons) != 0) {
        return true;
    }
    if (modifiers != kControl || !buttons.isLeftButton()) {
        return false;
    }
    takeDefaultValue();
    return true;
}

void CControl::takeDefaultValue() {
    if (getValue() == defaultValue) {
        return;
    }
    beginEdit();
    setValue(defaultValue);
    valueChanged();
    endEdit();
    setDirty();
}

void CControl::setFrame(CFrame* newFrame) {
    if (!newFrame && isEditing()) {
        openEdits = 1;
        endEdit();
    }
    CView::setFrame(newFrame);
}

} // namespace VSTGUI
