#include "vstgui/lib/controls/cbuttons.h"

namespace VSTGUI {

CKickButton::CKickButton(const CRect& size, IControlListener* listener, std::int32_t tag,
                         CBitmap* background)
    : CKickButton(size, listener, tag, size.getHeight(), background) {}

CKickButton::CKickButton(const CRect& size, IControlListener* listener, std::int32_t tag,
                         CCoord heightOfOneImage, CBitmap* background, const CPoint& /*offset*/)
    : CControl(size, listener, tag, background), heightOfOneImage(heightOfOneImage) {
    setWantsFocus(true);
}

void CKickButton::draw(CDrawContext* context) {
    if (getBackground()) {
        const bool isDown = getValue() == getMax();
        getBackground()->draw(context, getViewSize(), {0, isDown ? heightOfOneImage : 0});
    }
}

CMouseEventResult CKickButton::onMouseDown(CPoint& where, const CButtonState& buttons) {
    if ((buttons & kLButton) == 0) {
        return kMouseEventNotHandled;
    }
    beginEdit();
    CKickButton::onMouseMoved(where, buttons);
    return kMouseEventHandled;
}

CMouseEventResult CKickButton::onMouseMoved(CPoint& where, const CButtonState&) {
    if (!isEditing()) {
        return kMouseEventNotHandled;
    }
    // While it is held, all four edges belong to it.
    const CRect& size = getViewSize();
    const bool isOver = where.x >= size.left && where.x <= size.right && where.y >= size.top &&
                        where.y <= size.bottom;
    setValue(isOver ? getMax() : getMin());
    if (isDirty()) {
        invalid();
    }
    return kMouseEventHandled;
}

CMouseEventResult CKickButton::onMouseUp(CPoint&, const CButtonState&) {
    if (!isEditing()) {
        return kMouseEventNotHandled;
    }
    if (getValue() > getMin()) {
        valueChanged();
    }
    return release();
}

CMouseEventResult CKickButton::onMouseCancel() {
    return isEditing() ? release() : kMouseEventNotHandled;
}

CMouseEventResult CKickButton::release() {
    setValue(getMin());
    valueChanged();
    if (isDirty()) {
        invalid();
    }
    endEdit();
    return kMouseEventHandled;
}

} // namespace VSTGUI
