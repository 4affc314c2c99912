// A frame's window on Windows.
#pragma once

#include "vstgui/lib/platform/iplatformframe.h"
#include "vstgui/lib/platform/iplatformframecallback.h"

#include <windows.h>

#include <string>

namespace VSTGUI {

// The class that Windows knows the windows of one module by. No two modules share one: each handles
// messages with its own code. Outlives its windows: the module may be unloaded afterwards.
class Win32FrameClass {
public:
    explicit Win32FrameClass(HINSTANCE instance);
    ~Win32FrameClass();
    Win32FrameClass(const Win32FrameClass&) = delete;
    Win32FrameClass& operator=(const Win32FrameClass&) = delete;

    // Makes a hidden window of `size` pixels at the top left of `parent`; null if there is no such
    // parent. Pixels are those of `parent`: Windows scales neither or both. `user` is what
    // WM_NCCREATE brings.
    HWND createWindow(const CPoint& size, HWND parent, void* user) const;

private:
    HINSTANCE instance;
    std::wstring name;
};

// Opens a window of `size` pixels at the top left of `parent`, shown. Null if there is no such
// window. User-interface thread, which is the one that owns `parent`: its loop then brings the
// window's messages too.
SharedPointer<IPlatformFrame> openWin32Frame(const Win32FrameClass& frameClass,
                                             IPlatformFrameCallback& callback, const CPoint& size,
                                             HWND parent);

} // namespace VSTGUI
