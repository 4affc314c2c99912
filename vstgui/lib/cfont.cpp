#include "vstgui/lib/cfont.h"

#include "vstgui/lib/platform/platformfactory.h"

namespace VSTGUI {

CFontRef kNormalFont = nullptr;

const IPlatformFont& CFontDesc::getPlatformFont() {
    if (!platformFont) {
        platformFont = getPlatformFactory().createFont(name.getString(), size, style);
    }
    return *platformFont;
}

} // namespace VSTGUI
