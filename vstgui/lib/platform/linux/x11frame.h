// A frame's window on X11.
#pragma once

#include "vstgui/lib/platform/iplatformframe.h"
#include "vstgui/lib/platform/iplatformframecallback.h"
#include "vstgui/lib/platform/platform_x11.h"

namespace VSTGUI {

// Opens a window of `size` pixels at the top left of the X11 window with the id `parent`, on the
// display that the environment names. Null if that window or the display is not there. `runLoop`
// may be null. User-interface thread.
SharedPointer<IPlatformFrame> openX11Frame(IPlatformFrameCallback& callback, const CPoint& size,
                                           void* parent,
                                           const SharedPointer<X11::IRunLoop>& runLoop);

} // namespace VSTGUI
