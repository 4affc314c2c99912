// A rectangle of the frame that draws itself and hears the mouse.
#pragma once

#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/cbuttonstate.h"
#include "vstgui/lib/crect.h"
#include "vstgui/lib/vstguifwd.h"

#include <atomic>
#include <chrono>

namespace VSTGUI {

// User-interface thread, except functions that say "any thread". All coordinates are the frame's.
class CView : public NonAtomicReferenceCounted {
public:
    explicit CView(const CRect& size) : size(size) {}

    const CRect& getViewSize() const { return size; }

    // Asks for the view to be drawn again at the frame's next idle. Any thread.
    virtual void setDirty(bool state = true) { dirty.store(state, std::memory_order_relaxed); }
    virtual bool isDirty() const { return dirty.load(std::memory_order_relaxed); }
    // Asks for the view to be drawn again.
    void invalid();
    // The same for a part of the view. Of no effect while the view is in no frame.
    virtual void invalidRect(const CRect& rect);

    // The picture is shared; null takes it away. Shown from the next idle on.
    void setBackground(CBitmap* picture);
    CBitmap* getBackground() const { return background; }
    // A transparent view lets a press or a wheel that it does not handle through to the view
    // below.
    void setTransparency(bool state) { transparent = state; }
    bool getTransparency() const { return transparent; }
    // Kept for views that ask; no key ever reaches a view, the keyboard stays with the host.
    void setWantsFocus(bool state) { focusWanted = state; }
    bool wantsFocus() const { return focusWanted; }

    // Null while the view is in no frame.
    CFrame* getFrame() const { return frame; }
    bool isAttached() const { return frame != nullptr; }

    // Draws the view. Called with the drawing clipped to the part that is due.
    virtual void draw(CDrawContext* context);
    // Whether the mouse is over the view. The right and the bottom edge are outside.
    virtual bool hitTest(const CPoint& where) const { return size.pointInside(where); }

    // A view that handles the press hears of all moves and the release that follow, wherever the
    // pointer goes. The view may be removed, or the frame closed, from within.
    virtual CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons);
    virtual CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons);
    virtual CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons);
    // The release will never come.
    virtual CMouseEventResult onMouseCancel();
    // Sets `event.consumed` if no view below shall hear of it.
    virtual void onMouseWheelEvent(MouseWheelEvent& event);

    // Called once in every idle of the frame, before the views that are dirty are drawn.
    virtual void onIdle(std::chrono::steady_clock::time_point now);
    // Called by the container. Null says goodbye to the frame: whatever was begun must end.
    virtual void setFrame(CFrame* newFrame) { frame = newFrame; }

protected:
    ~CView() override = default;

private:
    CRect size;
    SharedPointer<CBitmap> background;
    CFrame* frame = nullptr;
    std::atomic<bool> dirty = false;
    bool transparent = false;
    bool focusWanted = false;
};

} // namespace VSTGUI
