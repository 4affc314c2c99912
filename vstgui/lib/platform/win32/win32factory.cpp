#include "vstgui/lib/platform/win32/win32factory.h"

#include "vstgui/lib/platform/win32/win32string.h"

#include <memory>

namespace VSTGUI {

SharedPointer<IPlatformFrame> Win32Factory::createFrame(IPlatformFrameCallback& callback,
                                                        const CPoint& size, void* parent,
                                                        PlatformType type,
                                                        IPlatformFrameConfig* /*config*/) const {
    if (type != PlatformType::kHWND && type != PlatformType::kDefaultNative) {
        return {};
    }
    return openWin32Frame(frameClass, callback, size, static_cast<HWND>(parent));
}

PlatformFontPtr Win32Factory::createFont(const std::string& name, CCoord size,
                                         std::int32_t style) const {
    return makeGdiplusFont(name, size, style);
}

PlatformBitmapPtr Win32Factory::createBitmap(const CResourceDescription& resource) const {
    if (!resource.name) {
        return {};
    }
    HRSRC found = FindResourceW(instance, wideString(resource.name).c_str(), L"PNG");
    HGLOBAL loaded = found ? LoadResource(instance, found) : nullptr;
    return loaded ? decodeGdiplusBitmap(LockResource(loaded), SizeofResource(instance, found))
                  : PlatformBitmapPtr();
}

PlatformBitmapPtr Win32Factory::createBitmapFromMemory(const void* data, std::uint32_t size) const {
    return decodeGdiplusBitmap(data, size);
}

std::unique_ptr<IPlatformFactory> createPlatformFactory(PlatformInstanceHandle instance) {
    return std::make_unique<Win32Factory>(static_cast<HINSTANCE>(instance));
}

} // namespace VSTGUI
