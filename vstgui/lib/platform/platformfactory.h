// The one door to the platform: makes its windows, fonts and pictures.
#pragma once

#include "vstgui/lib/cresourcedescription.h"
#include "vstgui/lib/platform/iplatformbitmap.h"
#include "vstgui/lib/platform/iplatformfont.h"
#include "vstgui/lib/platform/iplatformframe.h"
#include "vstgui/lib/platform/iplatformframecallback.h"
#include "vstgui/lib/platform/platformfwd.h"
#include "vstgui/lib/vstguifwd.h"

#include <cstdint>
#include <memory>
#include <string>

namespace VSTGUI {

class LinuxFactory;

// User-interface thread.
class IPlatformFactory {
public:
    IPlatformFactory() = default;
    IPlatformFactory(const IPlatformFactory&) = delete;
    IPlatformFactory& operator=(const IPlatformFactory&) = delete;
    virtual ~IPlatformFactory() = default;

    // A window of `size` pixels inside the window `parent`, shown. Null if there can be none: no
    // such parent, or of another `type` than the platform's. `callback` hears of its events until
    // the window is closed; `config` is read during the call only.
    virtual SharedPointer<IPlatformFrame> createFrame(IPlatformFrameCallback& callback,
                                                      const CPoint& size, void* parent,
                                                      PlatformType type,
                                                      IPlatformFrameConfig* config) const = 0;
    // Never null: a font that is not installed is replaced by the nearest one.
    virtual PlatformFontPtr createFont(const std::string& name, CCoord size,
                                       std::int32_t style) const = 0;
    // Null without such a picture.
    virtual PlatformBitmapPtr createBitmap(const CResourceDescription& resource) const = 0;
    // Decodes the `size` bytes of a PNG file at `data`; null if they are none.
    virtual PlatformBitmapPtr createBitmapFromMemory(const void* data,
                                                     std::uint32_t size) const = 0;
    // Null on other platforms.
    virtual const LinuxFactory* asLinuxFactory() const { return nullptr; }
};

// The factory that `init` made.
const IPlatformFactory& getPlatformFactory();

// Defined once per platform.
std::unique_ptr<IPlatformFactory> createPlatformFactory(PlatformInstanceHandle instance);

} // namespace VSTGUI
