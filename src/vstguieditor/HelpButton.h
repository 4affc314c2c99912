// The question mark at the top: opens the help.
#pragma once

#include "vstguieditor/ClickArea.h"

namespace zelvatone {

class VSTGuiEditor;

class HelpButton final : public ClickArea {
public:
    // `editor` outlives the button.
    HelpButton(const VSTGUI::CRect& size, VSTGuiEditor& editor);

    VSTGUI::CMouseEventResult onMouseUp(VSTGUI::CPoint& where,
                                        const VSTGUI::CButtonState& buttons) override;

private:
    VSTGuiEditor& editor_;
};

} // namespace zelvatone
