#include "vstgui/lib/controls/ctextlabel.h"

#include "vstgui/lib/cdrawcontext.h"

namespace VSTGUI {

CTextLabel::CTextLabel(const CRect& size, UTF8StringPtr text, CBitmap* background,
                       std::int32_t /*style*/)
    : CControl(size, nullptr, -1, background), text(text), font(kNormalFont) {}

void CTextLabel::setText(const UTF8String& newText) {
    if (newText.getString() != text.getString()) {
        text = newText;
        setDirty();
    }
}

void CTextLabel::draw(CDrawContext* context) {
    if (getBackground()) {
        CView::draw(context);
    } else if (!getTransparency()) {
        context->fillRect(getViewSize(), backColor);
        context->frameRect(getViewSize(), frameColor);
    }
    drawText(*context);
}

void CTextLabel::drawText(CDrawContext& context) {
    if (!font || text.empty()) {
        return;
    }
    // Laid out at the size that is seen: letters that are enlarged afterwards would be blurred.
    const double scale = context.getScaleFactor();
    const IPlatformFont& platformFont = font->getPlatformFont(scale);
    const CPoint middle = getViewSize().getCenter();
    // Capitals stand in the middle of the height, whatever hangs below the line.
    const CPoint baseline{middle.x - platformFont.getStringWidth(text.getString()) / scale / 2,
                          middle.y + platformFont.getCapHeight() / scale / 2};
    context.drawString(platformFont, text.getString(), baseline, getViewSize(), fontColor);
}

} // namespace VSTGUI
