// Knobs: turned by drag and wheel, shown as one picture of a strip.
#pragma once

#include "vstgui/lib/controls/ccontrol.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace VSTGUI {

// What the mouse does to a knob. User-interface thread.
//
// A drag with the left button turns it: around its centre (from lower left, clockwise over the
// top, to lower right), or up and right along a line, as the frame's knob mode says; Alt swaps the
// two. Each notch of the wheel is a tenth of the range, with Shift a hundredth. One gesture is
// told around a drag, and one around all the notches that follow each other within half a second.
class CKnobBase : public CControl {
public:
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;
    // Ends the drag. One along a line goes back to the value before it, one around stays.
    CMouseEventResult onMouseCancel() override;
    void onMouseWheelEvent(MouseWheelEvent& event) override;
    void onIdle(std::chrono::steady_clock::time_point now) override;
    void setFrame(CFrame* newFrame) override;

protected:
    using CControl::CControl;
    ~CKnobBase() override = default;

private:
    using Clock = std::chrono::steady_clock;

    struct Drag {
        bool circular;
        float fractionBefore; // of the range, for a cancelled drag
        CPoint last;          // where the pointer was seen last
        float reference;      // circular: the value that a jump is measured from
        CPoint anchor;        // line: where ...
        float anchorValue;    // ... this was the value, a fraction of the range
        CButtonState buttons; // line: with these keys from there on
    };

    bool isCircular(const CButtonState& buttons) const;
    float valueAt(const CPoint& where) const;
    float circularValue(const CPoint& where);
    float lineValue(const CPoint& where, const CButtonState& buttons);
    void setUserValue(float fraction);
    void endWheel();

    std::optional<Drag> drag;
    std::optional<Clock::time_point> wheelEnd; // when the wheel's gesture ends
};

// A knob whose picture is a strip of equal pictures from top to bottom, first for the lowest
// value. User-interface thread.
class CAnimKnob final : public CKnobBase {
public:
    // Each picture of the strip is as high as the view. Without a strip nothing is drawn.
    CAnimKnob(const CRect& size, IControlListener* listener, std::int32_t tag, CBitmap* background);
    // The pictures are counted from the strip's height and `heightOfOneImage`, more than 0: the
    // number given is not used, and no more is the offset.
    CAnimKnob(const CRect& size, IControlListener* listener, std::int32_t tag,
              std::int32_t subPixmaps, CCoord heightOfOneImage, CBitmap* background,
              const CPoint& offset = {0, 0});

    void draw(CDrawContext* context) override;

protected:
    ~CAnimKnob() override = default;

private:
    CCoord heightOfOneImage;
};

} // namespace VSTGUI
