// A font by name and size.
#pragma once

#include "vstgui/lib/cstring.h"
#include "vstgui/lib/platform/iplatformfont.h"
#include "vstgui/lib/vstguifwd.h"

#include <cstdint>
#include <map>
#include <utility>

namespace VSTGUI {

enum CTxtFace : std::int32_t { kNormalFace = 0, kBoldFace = 2, kItalicFace = 4 };

// Shared by all views that write with it. User-interface thread, except the constructor: any
// thread.
class CFontDesc final : public NonAtomicReferenceCounted {
public:
    // `size` in pixels; `style`: CTxtFace flags. Needs no start-up of the toolkit: the platform's
    // font is made when something is written or measured.
    explicit CFontDesc(UTF8String name = "", const CCoord& size = 0,
                       std::int32_t style = kNormalFace)
        : name(std::move(name)), size(size), style(style) {}

    const UTF8String& getName() const { return name; }
    CCoord getSize() const { return size; }
    std::int32_t getStyle() const { return style; }
    // The platform's font `scale` times as large, for a frame that is shown so; made at the first
    // call for that scale. Its measures are the window's pixels.
    const IPlatformFont& getPlatformFont(double scale = 1);

protected:
    ~CFontDesc() override = default;

private:
    UTF8String name;
    CCoord size;
    std::int32_t style;
    std::map<double, PlatformFontPtr> platformFonts; // by scale
};

// Arial 12, which labels write with; null outside init .. exit.
extern CFontRef kNormalFont;

} // namespace VSTGUI
