// The maker's mark, painted into the background: leads to the maker's web page.
#pragma once

#include "vstguieditor/ClickArea.h"

namespace zelvatone {

class QuillfeatherBadge final : public ClickArea {
public:
    explicit QuillfeatherBadge(const VSTGUI::CRect& size);

    VSTGUI::CMouseEventResult onMouseUp(VSTGUI::CPoint& where,
                                        const VSTGUI::CButtonState& buttons) override;
};

} // namespace zelvatone
