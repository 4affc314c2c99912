// A picture.
#pragma once

#include "vstgui/lib/cpoint.h"
#include "vstgui/lib/cresourcedescription.h"
#include "vstgui/lib/platform/iplatformbitmap.h"
#include "vstgui/lib/vstguifwd.h"

#include <utility>

namespace VSTGUI {

// Shared by all who show it. User-interface thread.
class CBitmap final : public NonAtomicReferenceCounted {
public:
    // Looks the resource up where the platform keeps them. A missing one is not an error: the
    // picture then has no platform picture and no size, and draws nothing.
    explicit CBitmap(const CResourceDescription& resource);
    // `picture` may be null.
    explicit CBitmap(PlatformBitmapPtr picture) : picture(std::move(picture)) {}

    // In the frame's pixels, whatever the platform picture has of its own.
    CCoord getWidth() const {
        return picture ? picture->getSize().x / picture->getScaleFactor() : 0;
    }
    CCoord getHeight() const {
        return picture ? picture->getSize().y / picture->getScaleFactor() : 0;
    }
    bool isLoaded() const { return picture; }
    // Null for a missing picture.
    const PlatformBitmapPtr& getPlatformBitmap() const { return picture; }

    // Fills `rect` with the picture so that its point `offset` comes to the top left. Where the
    // picture ends nothing is drawn. All in the frame's pixels.
    void draw(CDrawContext* context, const CRect& rect, const CPoint& offset = {0, 0});

protected:
    ~CBitmap() override = default;

private:
    PlatformBitmapPtr picture;
};

} // namespace VSTGUI
