#include "vstguieditor/EditorPlatform.h"
#include "vstguieditor/EmbeddedPictures.h"

#include "vstgui/lib/platform/platformfactory.h"

#include <cstdint>

namespace zelvatone {

VSTGUI::SharedPointer<VSTGUI::CBitmap> loadPicture(const char* name) {
    const auto bytes = embeddedPicture(name);
    if (bytes.empty()) {
        // Leaves the search to the toolkit, which returns an empty picture if it finds none.
        return VSTGUI::makeOwned<VSTGUI::CBitmap>(name);
    }
    return VSTGUI::makeOwned<VSTGUI::CBitmap>(VSTGUI::getPlatformFactory().createBitmapFromMemory(
        bytes.data(), static_cast<std::uint32_t>(bytes.size())));
}

} // namespace zelvatone
