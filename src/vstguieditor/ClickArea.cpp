#include "vstguieditor/ClickArea.h"

namespace zelvatone {

ClickArea::ClickArea(const VSTGUI::CRect& size, std::int32_t tag)
    : CKickButton(size, nullptr, tag, nullptr) {
    setWantsFocus(false);
    // A press with Ctrl sets the default value: the value is that already, so the listener is not
    // called.
    setDefaultValue(0.0F);
}

// The base class would begin a gesture, of which the host is told.
VSTGUI::CMouseEventResult ClickArea::onMouseDown(VSTGUI::CPoint& /*where*/,
                                                 const VSTGUI::CButtonState& buttons) {
    return buttons.isLeftButton() ? VSTGUI::kMouseEventHandled : VSTGUI::kMouseEventNotHandled;
}

} // namespace zelvatone
