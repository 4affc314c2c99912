// Writes to standard output, as JSON, where the editor has its panels, knobs and texts: the page in
// the browser puts its own there. Pixels from the top left of the editor's picture.

#include "vstguieditor/EditorLayout.h"

#include <cstdio>
#include <string_view>

namespace zelvatone {

namespace {

void printArea(const char* name, const EditorArea& area, const char* end) {
    std::printf("  \"%s\": [%g, %g, %g, %g]%s\n", name, area.left, area.top, area.width,
                area.height, end);
}

void printPanels() {
    std::printf("  \"panels\": [");
    const char* comma = "";
    for (const EditorArea& area : kPanelAreas) {
        std::printf("%s[%g, %g, %g, %g]", comma, area.left, area.top, area.width, area.height);
        comma = ", ";
    }
    std::printf("],\n");
}

// Kind, parameter, left, top, width, height.
void printControls() {
    std::printf("  \"controls\": [");
    const char* comma = "";
    for (const WidgetRecord& record : makeEditorLayout()) {
        if (std::string_view(record.kind) == "END") {
            break;
        }
        std::printf("%s\n    [\"%s\", %d, %g, %g, %g, %g]", comma, record.kind, record.parameter,
                    record.left, record.top, record.right - record.left,
                    record.bottom - record.top);
        comma = ",";
    }
    std::printf("\n  ]\n");
}

} // namespace

} // namespace zelvatone

int main() {
    using namespace zelvatone;
    std::printf("{\n");
    printArea("face", {0, 0, kEditorWidth, kEditorHeight}, ",");
    printArea("helpButton", kHelpButtonArea, ",");
    printArea("badge", kBadgeArea, ",");
    printPanels();
    printControls();
    std::printf("}\n");
    return 0;
}
