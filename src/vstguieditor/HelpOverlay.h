// The help, which covers the whole editor: an index picture with five areas, and a page for each.
#pragma once

#include "vstguieditor/ClickArea.h"
#include "vstguieditor/EditorLayout.h"

#include <array>

namespace zelvatone {

class VSTGuiEditor;

// A click on an area of the index shows its page, one on a page shows the index again, and one
// beside the areas closes the help.
class HelpOverlay final : public ClickArea {
public:
    static constexpr int kPages = kPanelAreas.size();

    // Shows the index. `editor` outlives the overlay.
    HelpOverlay(const VSTGUI::CRect& size, VSTGuiEditor& editor);

    VSTGUI::CMouseEventResult onMouseUp(VSTGUI::CPoint& where,
                                        const VSTGUI::CButtonState& buttons) override;

private:
    void showIndex();
    void showPage(int page); // from 1 on
    void showPicture(const char* name);
    int pageAt(const VSTGUI::CPoint& where) const; // 0 beside the areas

    VSTGuiEditor& editor_;
    std::array<VSTGUI::CRect, kPages> areas_; // in page order
    bool isIndexShown_ = true;
};

} // namespace zelvatone
