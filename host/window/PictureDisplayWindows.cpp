#include "host/window/PictureDisplay.h"

namespace zelvatone {

// Every session of Windows has a desktop.
PictureDisplay::PictureDisplay() = default;
PictureDisplay::~PictureDisplay() = default;

} // namespace zelvatone
