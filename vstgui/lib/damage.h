// The parts of a window that are due to be drawn.
#pragma once

#include "vstgui/lib/crect.h"

#include <utility>
#include <vector>

namespace VSTGUI {

// A few rectangles of whole pixels that cover everything that was added, and little else, however
// much that was.
class Damage {
public:
    // Only what lies within `bounds` counts.
    explicit Damage(const CRect& bounds) : bounds(bounds) {}

    void add(const CRect& rect);
    bool isEmpty() const { return rects.empty(); }
    // Returns the rectangles and begins anew.
    std::vector<CRect> take() { return std::exchange(rects, {}); }

private:
    CRect bounds;
    std::vector<CRect> rects;
};

} // namespace VSTGUI
