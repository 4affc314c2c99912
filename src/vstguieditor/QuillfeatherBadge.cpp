#include "vstguieditor/QuillfeatherBadge.h"

#include "vstguieditor/WebPage.h"

#include <cstdio>

namespace zelvatone {

QuillfeatherBadge::QuillfeatherBadge(const VSTGUI::CRect& size)
    : ClickArea(size, kNoParameterTag) {}

VSTGUI::CMouseEventResult QuillfeatherBadge::onMouseUp(VSTGUI::CPoint& /*where*/,
                                                       const VSTGUI::CButtonState& /*buttons*/) {
    std::printf("Mouse up!\n");
    openWebPage(kMakerWebPage);
    return VSTGUI::kMouseEventHandled;
}

} // namespace zelvatone
