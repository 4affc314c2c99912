#include "vstguieditor/ClickArea.h"

namespace zelvatone {

ClickArea::ClickArea(const VSTGUI::CRect& size, std::int32_t tag)
    : CKickButton(size, nullptr, tag, nullptr) {
    setWantsFocus(false);
    // A press with Ctrl sets the default value: the value is that already, so nothing is told.
    setDefaultValue(0.0F);
}

// The base class's answer would begin a gesture that the host hears of.
VSTGUI::CMouseEventResult ClickArea::onMouseDown(VSTGUI::CPoint& /*where*/,
                                                 const VSTGUI::CButtonState& buttons) {
    return buttons.isLeftButton() ? VSTGUI::kMouseEventHandled : VSTGUI::kMouseEventNotHandled;
}

} // namespace zelvatone
