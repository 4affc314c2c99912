// A point, or a distance, in pixels; y grows downwards.
#pragma once

#include "vstgui/lib/vstguibase.h"

namespace VSTGUI {

struct CPoint {
    CCoord x = 0;
    CCoord y = 0;

    constexpr CPoint() = default;
    constexpr CPoint(CCoord x, CCoord y) : x(x), y(y) {}

    CPoint& operator()(CCoord newX, CCoord newY) {
        x = newX;
        y = newY;
        return *this;
    }
    CPoint& offset(CCoord dx, CCoord dy) { return (*this)(x + dx, y + dy); }
    CPoint& operator+=(const CPoint& other) { return offset(other.x, other.y); }
    CPoint& operator-=(const CPoint& other) { return offset(-other.x, -other.y); }

    constexpr CPoint operator+(const CPoint& other) const { return {x + other.x, y + other.y}; }
    constexpr CPoint operator-(const CPoint& other) const { return {x - other.x, y - other.y}; }
    constexpr bool operator==(const CPoint&) const = default;
};

} // namespace VSTGUI
