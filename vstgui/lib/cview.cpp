#include "vstgui/lib/cview.h"

#include "vstgui/lib/cframe.h"

namespace VSTGUI {

void CView::invalid() {
    // First clean, then asked for: what another thread sets from here on is either drawn already
    // or makes the view dirty anew.
    setDirty(false);
    invalidRect(size);
}

void CView::invalidRect(const CRect& rect) {
    if (frame) {
        frame->invalidRect(rect);
    }
}

void CView::setBackground(CBitmap* picture) {
    background = shared(picture);
    setDirty();
}

void CView::draw(CDrawContext* context) {
    if (background) {
        background->draw(context, size);
    }
}

CMouseEventResult CView::onMouseDown(CPoint&, const CButtonState&) {
    return kMouseEventNotImplemented;
}

CMouseEventResult CView::onMouseMoved(CPoint&, const CButtonState&) {
    return kMouseEventNotImplemented;
}

CMouseEventResult CView::onMouseUp(CPoint&, const CButtonState&) {
    return kMouseEventNotImplemented;
}

CMouseEventResult CView::onMouseCancel() {
    return kMouseEventNotImplemented;
}

void CView::onMouseWheelEvent(MouseWheelEvent&) {}

void CView::onIdle(std::chrono::steady_clock::time_point) {}

} // namespace VSTGUI
