// Pictures of how loud a sound is when.
#pragma once

#include "host/picture/Picture.h"

#include <span>

namespace zelvatone {

// Full scale, 1.0, reaches from the bottom to the top. What the samples reach is light, their root
// mean square solid; the ground is transparent, so that the picture suits light and dark pages.
Picture drawWaveform(std::span<const float> samples, int width, int height);

} // namespace zelvatone
