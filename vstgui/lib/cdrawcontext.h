// What views draw with; each platform brings its own.
#pragma once

#include "vstgui/lib/crect.h"
#include "vstgui/lib/vstguifwd.h"

#include <string>

namespace VSTGUI {

// Coordinates are the frame's. User-interface thread, during the frame's drawing only.
class CDrawContext {
public:
    CDrawContext() = default;
    CDrawContext(const CDrawContext&) = delete;
    CDrawContext& operator=(const CDrawContext&) = delete;
    virtual ~CDrawContext() = default;

    // Puts the picture's point `offset` at the top left of `rect`, cut at the edges of `rect`.
    virtual void drawBitmap(const IPlatformBitmap& picture, const CRect& rect,
                            const CPoint& offset) = 0;
    virtual void fillRect(const CRect& rect, const CColor& color) = 0;
    // A line of one pixel along the inside of the edges of `rect`.
    virtual void frameRect(const CRect& rect, const CColor& color) = 0;
    // One line of text from `baseline` to the right, cut at the edges of `clip`.
    virtual void drawString(const IPlatformFont& font, const std::string& text,
                            const CPoint& baseline, const CRect& clip, const CColor& color) = 0;
};

} // namespace VSTGUI
