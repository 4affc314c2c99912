#include "vstguieditor/HelpButton.h"

#include "vstguieditor/vstguieditor.h"

#include <cstdio>

namespace zelvatone {

HelpButton::HelpButton(const VSTGUI::CRect& size, VSTGuiEditor& editor)
    : ClickArea(size, kNoParameterTag), editor_(editor) {}

VSTGUI::CMouseEventResult HelpButton::onMouseUp(VSTGUI::CPoint& /*where*/,
                                                const VSTGUI::CButtonState& /*buttons*/) {
    std::printf("Help button Mouse up!\n");
    editor_.showHelp();
    return VSTGUI::kMouseEventHandled;
}

} // namespace zelvatone
