// Pictures made for tests.
#pragma once

#include "vstgui/vstgui.h"

#include <functional>
#include <string>

namespace VSTGUI::test {

// A PNG file of the given size whose pixels have the colour that `color` returns for (x, y).
std::string makePng(int width, int height, const std::function<CColor(int x, int y)>& color);
// The same as a picture with one reference, the caller's.
CBitmap* makePicture(int width, int height, const std::function<CColor(int x, int y)>& color);

// The colour of picture `index` of `makeStrip`.
CColor stripColor(int index);
// A strip of 30 pictures of 48 x 48, each of one colour. One reference, the caller's.
CBitmap* makeStrip();

} // namespace VSTGUI::test
