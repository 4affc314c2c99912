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

    CCoord getWidth() const { return picture ? picture->getSize().x : 0; }
    CCoord getHeight() const { return picture ? picture->getSize().y : 0; }
    bool isLoaded() const { return picture; }
    // Null for a missing picture.
    const PlatformBitmapPtr& getPlatformBitmap() const { return picture; }

    // Fills `rect` with the picture, unscaled, so that its point `offset` comes to the top left.
    // Where the picture ends nothing is drawn.
    void draw(CDrawContext* context, const CRect& rect, const CPoint& offset = {0, 0});

protected:
    ~CBitmap() override = default;

private:
    PlatformBitmapPtr picture;
};

} // namespace VSTGUI
