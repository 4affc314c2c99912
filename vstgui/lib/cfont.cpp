#include "vstgui/lib/cfont.h"

#include "vstgui/lib/platform/platformfactory.h"

namespace VSTGUI {

CFontRef kNormalFont = nullptr;

const IPlatformFont& CFontDesc::getPlatformFont(double scale) {
    PlatformFontPtr& font = platformFonts[scale];
    if (!font) {
        font = getPlatformFactory().createFont(name.getString(), size * scale, style);
    }
    return *font;
}

} // namespace VSTGUI
