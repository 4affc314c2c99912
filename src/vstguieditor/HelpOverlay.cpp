#include "vstguieditor/HelpOverlay.h"

#include "vstguieditor/EditorLayout.h"
#include "vstguieditor/vstguieditor.h"

#include <algorithm>
#include <cstdio>

namespace zelvatone {

namespace {

// Where the index picture has its panels. They hang on its lower edge.
std::array<VSTGUI::CRect, HelpOverlay::kPages> areasOf(const VSTGUI::CRect& overlay) {
    std::array<VSTGUI::CRect, HelpOverlay::kPages> areas;
    const double drop = overlay.getHeight() - kEditorHeight;
    std::ranges::transform(kPanelAreas, areas.begin(), [drop](const EditorArea& area) {
        return VSTGUI::CRect(VSTGUI::CPoint(area.left, area.top + drop),
                             VSTGUI::CPoint(area.width, area.height));
    });
    return areas;
}

// Unlike the toolkit's own test, all four edges belong to the area.
bool contains(const VSTGUI::CRect& area, const VSTGUI::CPoint& point) {
    return area.left <= point.x && point.x <= area.right && area.top <= point.y &&
           point.y <= area.bottom;
}

} // namespace

HelpOverlay::HelpOverlay(const VSTGUI::CRect& size, VSTGuiEditor& editor)
    : ClickArea(size, 0), editor_(editor), areas_(areasOf(size)) {
    showIndex();
}

VSTGUI::CMouseEventResult HelpOverlay::onMouseUp(VSTGUI::CPoint& where,
                                                 const VSTGUI::CButtonState& /*buttons*/) {
    if (!isIndexShown_) {
        showIndex();
    } else if (const int page = pageAt(where); page != 0) {
        showPage(page);
    } else {
        editor_.closeHelp();
    }
    return VSTGUI::kMouseEventHandled;
}

int HelpOverlay::pageAt(const VSTGUI::CPoint& where) const {
    int page = 1;
    for (const VSTGUI::CRect& area : areas_) {
        if (contains(area, where)) {
            return page;
        }
        ++page;
    }
    return 0;
}

void HelpOverlay::showIndex() {
    showPicture("helpoverlay.png");
    isIndexShown_ = true;
}

void HelpOverlay::showPage(int page) {
    char name[16]; // "help5.png" and some room
    std::snprintf(name, sizeof name, "help%d.png", page);
    showPicture(name);
    isIndexShown_ = false;
}

void HelpOverlay::showPicture(const char* name) {
    setBackground(editor_.picture(name));
    invalid();
}

} // namespace zelvatone
