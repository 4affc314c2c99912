#include "vstgui/lib/cbitmap.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/platform/platformfactory.h"

namespace VSTGUI {

CBitmap::CBitmap(const CResourceDescription& resource)
    : picture(getPlatformFactory().createBitmap(resource)) {}

void CBitmap::draw(CDrawContext* context, const CRect& rect, const CPoint& offset) {
    if (picture) {
        context->drawBitmap(*picture, rect, offset);
    }
}

} // namespace VSTGUI
