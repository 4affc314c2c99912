#include "vstgui/lib/cframe.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/controls/ccontrol.h"
#include "vstgui/lib/platform/platformfactory.h"

#include <chrono>
#include <utility>

namespace VSTGUI {
namespace {

// Lets `view` take the press, by way of the modifier keys first if it is a control.
CMouseEventResult press(CView& view, CPoint where, const CButtonState& buttons) {
    auto* control = dynamic_cast<CControl*>(&view);
    if (control && control->takeModifiedPress(buttons)) {
        return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
    }
    return view.onMouseDown(where, buttons);
}

// From the window's pixels to those of a frame that is shown `zoom` times as large.
void scalePosition(Event& event, double zoom) {
    if (event.type != EventType::MouseCancel) {
        CPoint& where = static_cast<MousePositionEvent&>(event).mousePosition;
        where = CPoint(where.x / zoom, where.y / zoom);
    }
}

bool isConsumed(CMouseEventResult result) {
    return result == kMouseEventHandled ||
           result == kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

} // namespace

CFrame::CFrame(const CRect& size, VSTGUIEditorInterface* editor)
    : CViewContainer(size), editor(editor) {}

bool CFrame::setZoom(double factor) {
    if (window || !(factor > 0)) {
        return false;
    }
    const CRect before({0, 0}, windowSize());
    const double zoomBefore = std::exchange(zoom, factor);
    const CRect after({0, 0}, windowSize());
    if (editor && before != after && !editor->beforeSizeChange(after, before)) {
        zoom = zoomBefore;
        return false;
    }
    return true;
}

// In whole pixels of the window.
CPoint CFrame::windowSize() const {
    return CRect(getViewSize()).scale(zoom).round().getSize();
}

bool CFrame::open(void* systemWindow, PlatformType type, IPlatformFrameConfig* config) {
    if (window || !systemWindow) {
        return false;
    }
    window = getPlatformFactory().createFrame(*this, windowSize(), systemWindow, type, config);
    return window;
}

void CFrame::close() {
    closeWindow();
    forget();
}

void CFrame::closeWindow() {
    mouseDownView = nullptr;
    removeAll();
    // Taken out first: a handler that is called from here finds a closed frame.
    if (const auto closing = std::exchange(window, nullptr)) {
        closing->close();
    }
}

void CFrame::idle() {
    const SharedPointer<CFrame> kept(this);
    if (window) {
        window->handleEvents();
    }
    const auto now = std::chrono::steady_clock::now();
    for (const auto& view : viewsFromTop()) {
        view->onIdle(now);
        if (view->isDirty()) {
            view->invalid();
        }
    }
    if (isDirty()) {
        invalid();
    }
    if (window) {
        window->drawInvalid();
    }
}

void CFrame::invalidRect(const CRect& rect) {
    if (window) {
        window->invalidRect(CRect(rect).scale(zoom));
    }
}

void CFrame::platformDrawRect(CDrawContext& context, const CRect& rect) {
    context.setScaleFactor(zoom);
    drawRect(context, CRect(rect).scale(1 / zoom));
}

std::int32_t CFrame::getKnobMode() const {
    const std::int32_t mode = editor ? editor->getKnobMode() : -1;
    return mode == -1 ? kDefaultKnobMode : mode;
}

void CFrame::beginEdit(std::int32_t tag) {
    if (editor) {
        editor->beginEdit(tag);
    }
}

void CFrame::endEdit(std::int32_t tag) {
    if (editor) {
        editor->endEdit(tag);
    }
}

void CFrame::dispatchEvent(Event& event) {
    // A handler may close the frame.
    const SharedPointer<CFrame> kept(this);
    scalePosition(event, zoom);
    switch (event.type) {
    case EventType::MouseDown:
        mouseDown(static_cast<MouseDownEvent&>(event));
        break;
    case EventType::MouseMove:
        mouseMoved(static_cast<MouseMoveEvent&>(event));
        break;
    case EventType::MouseUp:
        mouseUp(static_cast<MouseUpEvent&>(event));
        break;
    case EventType::MouseCancel:
        mouseCancel();
        break;
    case EventType::MouseWheel:
        mouseWheel(static_cast<MouseWheelEvent&>(event));
        break;
    }
}

void CFrame::mouseDown(MouseDownEvent& event) {
    if (mouseDownView) {
        // A second button ends a drag, and begins none. If no other one is held, then the release
        // that was to end the drag is lost, and this is a press like any other.
        mouseCancel();
        if (event.othersAreHeld) {
            event.consumed = true;
            return;
        }
    }
    for (const auto& view : viewsFromTop()) {
        if (!view->isAttached() || !view->hitTest(event.mousePosition)) {
            continue;
        }
        const CMouseEventResult result = press(*view, event.mousePosition, event.buttons());
        event.consumed = isConsumed(result);
        if (result == kMouseEventHandled && view->isAttached()) {
            mouseDownView = view;
            if (event.othersAreHeld) {
                mouseCancel();
            }
        }
        if (event.consumed || !view->getTransparency()) {
            return;
        }
    }
}

void CFrame::mouseMoved(MouseMoveEvent& event) {
    const auto view = mouseDownView;
    if (view && view->isAttached()) {
        CPoint where = event.mousePosition;
        view->onMouseMoved(where, event.buttons());
        event.consumed = true;
    }
}

void CFrame::mouseUp(MouseUpEvent& event) {
    // Any button's release ends the drag.
    const auto view = std::exchange(mouseDownView, nullptr);
    if (view && view->isAttached()) {
        CPoint where = event.mousePosition;
        view->onMouseUp(where, event.buttons());
        event.consumed = true;
    }
}

void CFrame::mouseCancel() {
    if (const auto view = std::exchange(mouseDownView, nullptr)) {
        view->onMouseCancel();
    }
}

void CFrame::mouseWheel(MouseWheelEvent& event) {
    if (mouseDownView) {
        // A drag holds its control; the wheel would tear at it.
        event.consumed = true;
        return;
    }
    for (const auto& view : viewsFromTop()) {
        if (!view->isAttached() || !view->hitTest(event.mousePosition)) {
            continue;
        }
        view->onMouseWheelEvent(event);
        if (event.consumed || !view->getTransparency()) {
            return;
        }
    }
}

} // namespace VSTGUI
