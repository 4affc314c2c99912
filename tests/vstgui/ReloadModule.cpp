// A module that writes with the toolkit, as a plug-in does.
#include "vstgui/lib/cfont.h"
#include "vstgui/lib/vstguiinit.h"

extern "C" __attribute__((visibility("default"))) int widthOfText(const char* text);

// Pixels, in a toolkit that is started and ended for it.
int widthOfText(const char* text) {
    VSTGUI::init(nullptr);
    const double width = VSTGUI::kNormalFont->getPlatformFont().getStringWidth(text);
    VSTGUI::exit();
    return static_cast<int>(width);
}
