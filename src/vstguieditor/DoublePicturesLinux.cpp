#include "vstguieditor/EditorPlatform.h"
#include "vstguieditor/EmbeddedPictures.h"

#include "vstgui/lib/platform/platformfactory.h"

#include <cstdint>

namespace zelvatone {

VSTGUI::SharedPointer<VSTGUI::CBitmap> loadDoublePicture(const char* name) {
    const auto bytes = embeddedDoublePicture(name);
    const auto picture = VSTGUI::getPlatformFactory().createBitmapFromMemory(
        bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    if (!picture) {
        return loadPicture(name);
    }
    picture->setScaleFactor(2);
    return VSTGUI::makeOwned<VSTGUI::CBitmap>(picture);
}

} // namespace zelvatone
