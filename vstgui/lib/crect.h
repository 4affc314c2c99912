// A rectangle in pixels, from its left and top edge up to, not including, right and bottom.
#pragma once

#include "vstgui/lib/cpoint.h"

#include <algorithm>
#include <cmath>

namespace VSTGUI {

struct CRect {
    CCoord left = 0;
    CCoord top = 0;
    CCoord right = 0;
    CCoord bottom = 0;

    constexpr CRect() = default;
    constexpr CRect(CCoord left, CCoord top, CCoord right, CCoord bottom)
        : left(left), top(top), right(right), bottom(bottom) {}
    constexpr CRect(const CPoint& origin, const CPoint& size)
        : CRect(origin.x, origin.y, origin.x + size.x, origin.y + size.y) {}

    constexpr bool operator==(const CRect&) const = default;

    constexpr CCoord getWidth() const { return right - left; }
    constexpr CCoord getHeight() const { return bottom - top; }
    constexpr CPoint getTopLeft() const { return {left, top}; }
    constexpr CPoint getSize() const { return {getWidth(), getHeight()}; }
    constexpr CPoint getCenter() const { return {left + getWidth() / 2, top + getHeight() / 2}; }
    constexpr bool isEmpty() const { return right <= left || bottom <= top; }
    constexpr bool pointInside(const CPoint& where) const {
        return where.x >= left && where.x < right && where.y >= top && where.y < bottom;
    }
    // Rectangles that only touch overlap too.
    constexpr bool rectOverlap(const CRect& other) const {
        return right >= other.left && left <= other.right && bottom >= other.top &&
               top <= other.bottom;
    }

    // The functions below change the rectangle and return it.
    CRect& offset(CCoord dx, CCoord dy) {
        return *this = {left + dx, top + dy, right + dx, bottom + dy};
    }
    // Moves each edge inwards.
    CRect& inset(CCoord dx, CCoord dy) {
        return *this = {left + dx, top + dy, right - dx, bottom - dy};
    }
    // Moves each edge outwards.
    CRect& extend(CCoord dx, CCoord dy) { return inset(-dx, -dy); }
    CRect& moveTo(CCoord x, CCoord y) { return offset(x - left, y - top); }
    // The part that lies inside `other` as well; empty if there is none.
    CRect& bound(const CRect& other) {
        *this = {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                 std::min(bottom, other.bottom)};
        right = std::max(left, right);
        bottom = std::max(top, bottom);
        return *this;
    }
    // The smallest rectangle around both.
    CRect& unite(const CRect& other) {
        return *this = {std::min(left, other.left), std::min(top, other.top),
                        std::max(right, other.right), std::max(bottom, other.bottom)};
    }
    // The smallest rectangle of whole pixels around this one.
    CRect& makeIntegral() {
        return *this = {std::floor(left), std::floor(top), std::ceil(right), std::ceil(bottom)};
    }
    // Multiplies each edge.
    CRect& scale(double factor) {
        return *this = {left * factor, top * factor, right * factor, bottom * factor};
    }
    // Moves each edge to the nearest whole pixel.
    CRect& round() {
        return *this = {std::round(left), std::round(top), std::round(right), std::round(bottom)};
    }
};

} // namespace VSTGUI
