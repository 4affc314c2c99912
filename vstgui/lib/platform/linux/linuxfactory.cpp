#include "vstgui/lib/platform/linux/linuxfactory.h"

#include "vstgui/lib/platform/linux/cairodrawing.h"
#include "vstgui/lib/platform/linux/x11frame.h"

#include <dlfcn.h>

#include <fstream>
#include <iterator>
#include <memory>

namespace VSTGUI {

// Pango registers its types with GObject, which stays in memory and knows them for ever. A host
// that unloads the module would take Pango away with it, and the next load would register the same
// types again, which GObject does not survive. So Pango, once used, stays.
LinuxFactory::LinuxFactory() {
    Dl_info pango{};
    if (dladdr(pangoSymbol(), &pango) != 0) {
        // The handle is kept for the process's life.
        dlopen(pango.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
    }
}

SharedPointer<IPlatformFrame> LinuxFactory::createFrame(IPlatformFrameCallback& callback,
                                                        const CPoint& size, void* parent,
                                                        PlatformType type,
                                                        IPlatformFrameConfig* config) const {
    if (type != PlatformType::kX11EmbedWindowID && type != PlatformType::kDefaultNative) {
        return {};
    }
    const auto* x11Config = dynamic_cast<X11::FrameConfig*>(config);
    return openX11Frame(callback, size, parent, x11Config ? x11Config->runLoop : nullptr);
}

PlatformFontPtr LinuxFactory::createFont(const std::string& name, CCoord size,
                                         std::int32_t style) const {
    return makeCairoFont(name, size, style);
}

PlatformBitmapPtr LinuxFactory::createBitmap(const CResourceDescription& resource) const {
    if (resourcePath.empty() || !resource.name) {
        return {};
    }
    std::ifstream file(resourcePath + resource.name, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    return createBitmapFromMemory(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

PlatformBitmapPtr LinuxFactory::createBitmapFromMemory(const void* data, std::uint32_t size) const {
    return decodeCairoBitmap(data, size);
}

std::unique_ptr<IPlatformFactory> createPlatformFactory(PlatformInstanceHandle) {
    return std::make_unique<LinuxFactory>();
}

} // namespace VSTGUI
