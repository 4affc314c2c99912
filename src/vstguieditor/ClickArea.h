// A button without a picture of its own that acts when the mouse is released.
#pragma once

#include "vstguieditor/Toolkit.h"

#include <cstdint>

namespace zelvatone {

// Takes the press of the left button in order to get the release, which then comes wherever the
// pointer has gone. Is bound to no parameter: it reports neither value nor gesture, and no key
// presses it. User-interface thread.
class ClickArea : public VSTGUI::CKickButton {
public:
    ClickArea(const VSTGUI::CRect& size, std::int32_t tag);

    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;

    // For buttons that are bound to no parameter: far above every parameter's number.
    static constexpr std::int32_t kNoParameterTag = 12345;
};

} // namespace zelvatone
