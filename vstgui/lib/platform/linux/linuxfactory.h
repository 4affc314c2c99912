// The door to X11, Cairo and Pango.
#pragma once

#include "vstgui/lib/platform/platformfactory.h"

#include <cstdint>
#include <string>

namespace VSTGUI {

// User-interface thread.
class LinuxFactory final : public IPlatformFactory {
public:
    LinuxFactory();

    // Where pictures are looked up by their name: a folder, ending in '/'. Empty, as it is at the
    // start, means nowhere.
    void setResourcePath(const std::string& path) const { resourcePath = path; }

    SharedPointer<IPlatformFrame> createFrame(IPlatformFrameCallback& callback, const CPoint& size,
                                              void* parent, PlatformType type,
                                              IPlatformFrameConfig* config) const override;
    PlatformFontPtr createFont(const std::string& name, CCoord size,
                               std::int32_t style) const override;
    PlatformBitmapPtr createBitmap(const CResourceDescription& resource) const override;
    PlatformBitmapPtr createBitmapFromMemory(const void* data, std::uint32_t size) const override;
    const LinuxFactory* asLinuxFactory() const override { return this; }

private:
    mutable std::string resourcePath;
};

} // namespace VSTGUI
