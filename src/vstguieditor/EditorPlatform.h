// What differs between toolkits and between platforms: starting the toolkit, opening its
// frame in the host's window, its event loop, and its pictures.
#pragma once

#include "vstguieditor/Toolkit.h"

namespace zelvatone {

// The toolkit is started while at least one of these exists. User-interface thread, as is all here.
class ToolkitUse {
public:
    ToolkitUse();
    ~ToolkitUse();
    ToolkitUse(const ToolkitUse&) = delete;
    ToolkitUse& operator=(const ToolkitUse&) = delete;
};

// Opens `frame` in the host's window `parent`; returns false if that window is gone. The toolkit
// must be started.
bool openFrame(VSTGUI::CFrame& frame, void* parent);

// Handles what came in for the frames of this library since the last call; never waits. May be
// called whether the toolkit is started or not.
void runToolkitLoop();

// The picture `name` as a new one; one without a platform picture if it is missing.
VSTGUI::SharedPointer<VSTGUI::CBitmap> loadPicture(const char* name);
// The same, made with twice the pixels along each edge, for a window that is shown larger; in the
// frame's coordinates it is as large as the other. The other one if there is none.
VSTGUI::SharedPointer<VSTGUI::CBitmap> loadDoublePicture(const char* name);

} // namespace zelvatone
