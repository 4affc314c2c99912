// Buttons.
#pragma once

#include "vstgui/lib/controls/ccontrol.h"

#include <cstdint>

namespace VSTGUI {

// A button that is down only while it is held: 1 while the left button holds it and the pointer is
// over it, else 0. Its picture is a strip of two, the lower one for down. The listener is
// told the 1 and then the 0 when it is released over the view, else the 0 only.
// A derived class that takes the press itself must not call this one for it, or must call this one
// for the release too: the gesture that is begun here must be ended here.
// User-interface thread.
class CKickButton : public CControl {
public:
    // `background` may be null; each of its pictures is as high as the view.
    CKickButton(const CRect& size, IControlListener* listener, std::int32_t tag,
                CBitmap* background);
    // With pictures of another height.
    CKickButton(const CRect& size, IControlListener* listener, std::int32_t tag,
                CCoord heightOfOneImage, CBitmap* background, const CPoint& offset = {0, 0});

    void draw(CDrawContext* context) override;
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseCancel() override;

protected:
    ~CKickButton() override = default;

private:
    CMouseEventResult release();

    CCoord heightOfOneImage;
};

} // namespace VSTGUI
