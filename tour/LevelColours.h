// The colours that stand for levels in a spectrogram.
#pragma once

#include "host/picture/Picture.h"

#include <vector>

namespace zelvatone {

// From silence (index 0, nearly black) over violet and orange to full level (index 255, a light
// yellow). Lightness as the eye judges it rises by the same amount from each to the next, so equal
// steps of level look equal and the picture reads without seeing any hue.
std::vector<Colour> levelColours();

// How light a colour looks, 0 for black to 1 for white: the lightness of the OKLab space.
double lightnessOf(const Colour& colour);

} // namespace zelvatone
