// What views draw with; each platform brings its own.
#pragma once

#include "vstgui/lib/crect.h"
#include "vstgui/lib/vstguifwd.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace VSTGUI {

// Coordinates are the frame's; where edges of pictures and rectangles fall between two pixels of
// the window, they move to the nearest one. User-interface thread, during the frame's drawing only.
class CDrawContext {
public:
    CDrawContext() = default;
    CDrawContext(const CDrawContext&) = delete;
    CDrawContext& operator=(const CDrawContext&) = delete;
    virtual ~CDrawContext() = default;

    // How many of the window's pixels make one of the frame's, along an edge; 1 at the start.
    void setScaleFactor(double factor) { scaleFactor = factor; }
    double getScaleFactor() const { return scaleFactor; }

    // Puts the picture's point `offset` at the top left of `rect`, cut at the edges of `rect`.
    virtual void drawBitmap(const IPlatformBitmap& picture, const CRect& rect,
                            const CPoint& offset) = 0;
    virtual void fillRect(const CRect& rect, const CColor& color) = 0;
    // A line of one of the frame's pixels, and of one of the window's at least, along the inside of
    // the edges of `rect`.
    virtual void frameRect(const CRect& rect, const CColor& color) = 0;
    // One line of text from `baseline` to the right, cut at the edges of `clip`. The font has the
    // window's pixels: it was made for this scale factor.
    virtual void drawString(const IPlatformFont& font, const std::string& text,
                            const CPoint& baseline, const CRect& clip, const CColor& color) = 0;

protected:
    // The same places in the window's pixels.
    CRect inWindow(const CRect& rect) const { return CRect(rect).scale(scaleFactor).round(); }
    CPoint inWindow(const CPoint& point) const {
        return {point.x * scaleFactor, point.y * scaleFactor};
    }
    // How wide a line of one of the frame's pixels is in the window's: whole pixels.
    double lineWidth() const { return std::max(std::round(scaleFactor), 1.0); }

private:
    double scaleFactor = 1;
};

} // namespace VSTGUI
