// The door to the windows of Windows, and to GDI+.
#pragma once

#include "vstgui/lib/platform/platformfactory.h"
#include "vstgui/lib/platform/win32/gdiplusdrawing.h"
#include "vstgui/lib/platform/win32/win32frame.h"

#include <cstdint>
#include <string>

namespace VSTGUI {

// User-interface thread, and not within DllMain.
class Win32Factory final : public IPlatformFactory {
public:
    // Looks pictures up among the resources of the module `instance`.
    explicit Win32Factory(HINSTANCE instance) : instance(instance), frameClass(instance) {}

    SharedPointer<IPlatformFrame> createFrame(IPlatformFrameCallback& callback, const CPoint& size,
                                              void* parent, PlatformType type,
                                              IPlatformFrameConfig* config) const override;
    PlatformFontPtr createFont(const std::string& name, CCoord size,
                               std::int32_t style) const override;
    PlatformBitmapPtr createBitmap(const CResourceDescription& resource) const override;
    PlatformBitmapPtr createBitmapFromMemory(const void* data, std::uint32_t size) const override;

private:
    HINSTANCE instance;
    GdiplusSession gdiplus;
    Win32FrameClass frameClass;
};

} // namespace VSTGUI
