// A line of text.
#pragma once

#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/cfont.h"
#include "vstgui/lib/controls/ccontrol.h"

#include <cstdint>

namespace VSTGUI {

// White on black with a black edge, unless it is transparent: then it shows the text alone. The
// text stands in the middle; what is too long is cut on both sides. Ignores the
// mouse. User-interface thread.
class CTextLabel final : public CControl {
public:
    // `text` and `background` may be null. The only style is 0.
    explicit CTextLabel(const CRect& size, UTF8StringPtr text = nullptr,
                        CBitmap* background = nullptr, std::int32_t style = 0);

    // Shown from the next idle on.
    void setText(const UTF8String& newText);
    const UTF8String& getText() const { return text; }

    void setFont(CFontRef newFont) { change(font, shared(newFont)); }
    void setFontColor(CColor color) { change(fontColor, color); }
    void setBackColor(CColor color) { change(backColor, color); }
    void setFrameColor(CColor color) { change(frameColor, color); }

    void draw(CDrawContext* context) override;

protected:
    ~CTextLabel() override = default;

private:
    template<class Property>
    void change(Property& property, const Property& newValue) {
        property = newValue;
        setDirty();
    }
    void drawText(CDrawContext& context);

    UTF8String text;
    SharedPointer<CFontDesc> font;
    CColor fontColor = kWhiteCColor;
    CColor backColor = kBlackCColor;
    CColor frameColor = kBlackCColor;
};

} // namespace VSTGUI
