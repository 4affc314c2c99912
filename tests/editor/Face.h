// What the editor is to look like, taken from the picture files and from where things are to lie.
#pragma once

#include "tests/vstgui/HostWindow.h"

#include <string>
#include <vector>

namespace zelvatone::test {

using VSTGUI::test::Pixel;
using VSTGUI::test::Screenshot;

struct Point {
    int x;
    int y;
};

struct Area {
    int left;
    int top;
    int right; // not included, nor is the bottom
    int bottom;

    int width() const { return right - left; }
    int height() const { return bottom - top; }
    bool holds(int x, int y) const { return x >= left && x < right && y >= top && y < bottom; }
};

inline constexpr int kWidth = 717, kHeight = 477;

// A knob of the editor by its parameter.
struct Knob {
    int parameter;
    int left;
    int top;

    Area area() const { return {left, top, left + 48, top + 48}; }
    Area label() const { return {left - 20, top - 20, left + 68, top}; }
    Area display() const { return {left - 20, top + 48, left + 68, top + 68}; }
    Point centre() const { return {left + 24, top + 24}; }
};

inline constexpr int kKnobs = 22;
extern const Knob kAllKnobs[kKnobs];
const Knob& knobOf(int parameter);

// A picture file of resources/, laid over black.
Screenshot readPicture(const std::string& name);

// The background with picture `frame` (0 to 29) of the knob strip over it, where `knob` lies.
Screenshot knobPicture(const Knob& knob, int frame);

// The part of `shot` in `area`.
Screenshot cutOut(const Screenshot& shot, const Area& area);

// Whether no colour of any pixel differs by more than `tolerance`, of 255.
bool areAlike(const Screenshot& a, const Screenshot& b, int tolerance = 0);

// Which of its 30 pictures the knob of `parameter` shows in a window at scale 1; -1 for none of
// them.
int frameShown(const VSTGUI::test::HostWindow& window, int parameter);

// The smallest area of `area` around all that differs visibly from the background; empty if
// nothing does. In the coordinates of `shot`, a picture of the whole editor.
Area inkIn(const Screenshot& shot, const Area& area);

} // namespace zelvatone::test
