// The root of the views: lives in a window of the host's and hands on what happens there.
#pragma once

#include "vstgui/lib/cviewcontainer.h"
#include "vstgui/lib/events.h"
#include "vstgui/lib/platform/iplatformframe.h"
#include "vstgui/lib/platform/iplatformframecallback.h"

#include <cstdint>

namespace VSTGUI {

class CControl;

// How the mouse turns a knob: around it, or along a line. The relative circle is the circle.
enum CKnobMode : std::int32_t { kCircularMode = 0, kRelativCircularMode = 1, kLinearMode = 2 };

// What a frame asks of the editor that shows it. User-interface thread.
class VSTGUIEditorInterface {
public:
    // A CKnobMode, or -1: the frame's default.
    virtual std::int32_t getKnobMode() const { return -1; }
    // The user begins, and ends, to change the parameter `tag`.
    virtual void beginEdit(std::int32_t /*tag*/) {}
    virtual void endEdit(std::int32_t /*tag*/) {}
    // Before the frame changes its size, which here a zoom does; returns whether it may.
    virtual bool beforeSizeChange(const CRect& /*newSize*/, const CRect& /*oldSize*/) {
        return true;
    }
    // Never called; kept for editors that override it.
    virtual void doIdleStuff() {}
    virtual CFrame* getFrame() const { return frame; }

protected:
    VSTGUIEditorInterface() = default;
    virtual ~VSTGUIEditorInterface() = default;

    CFrame* frame = nullptr; // the editor's own note; no frame sets it
};

// User-interface thread. Starts with one reference; close() gives it back.
class CFrame final : public CViewContainer, private IPlatformFrameCallback {
public:
    static constexpr std::int32_t kDefaultKnobMode = kCircularMode;

    // `size` starts at (0, 0). `editor` may be null, else it must outlive the frame's closing.
    CFrame(const CRect& size, VSTGUIEditorInterface* editor);

    // Shows the frame `factor` times as large: its window grows, drawing and mouse follow, while
    // all coordinates of views stay as they are. Returns false, and changes nothing, if the factor
    // is not above 0, the frame is open, or the editor refuses the size.
    bool setZoom(double factor);
    double getZoom() const { return zoom; }

    // Shows the frame in the host's window `systemWindow`. Returns false if that is null or gone,
    // or if the frame is open already.
    bool open(void* systemWindow, PlatformType type = PlatformType::kDefaultNative,
              IPlatformFrameConfig* config = nullptr);
    // Ends the user's gesture, removes all views, destroys the window and gives the first reference
    // back: the pointer is invalid afterwards. May be called from within any handler.
    void close();
    // Handles events that have come in, lets the views look at the clock, and draws every view that
    // is dirty. To be called as often as the host idles.
    void idle();

    // As if the window had told it: places are the window's pixels, and become the frame's.
    void dispatchEvent(Event& event);

    void invalidRect(const CRect& rect) override;

    VSTGUIEditorInterface* getEditor() const { return editor; }
    // The editor's choice, or the default.
    std::int32_t getKnobMode() const;
    // Forwarded to the editor.
    void beginEdit(std::int32_t tag);
    void endEdit(std::int32_t tag);

protected:
    ~CFrame() override = default;
    void beforeDelete() override { closeWindow(); }

private:
    CFrame* frameOfViews() override { return this; }
    void platformDrawRect(CDrawContext& context, const CRect& rect) override;
    void platformOnEvent(Event& event) override { dispatchEvent(event); }
    void platformOnTurn() override { idle(); }

    CPoint windowSize() const;
    void closeWindow();
    void mouseDown(MouseDownEvent& event);
    void mouseMoved(MouseMoveEvent& event);
    void mouseUp(MouseUpEvent& event);
    void mouseCancel();
    void mouseWheel(MouseWheelEvent& event);

    VSTGUIEditorInterface* editor;
    double zoom = 1;
    SharedPointer<IPlatformFrame> window; // null while closed
    SharedPointer<CView> mouseDownView;   // hears moves and the release
};

} // namespace VSTGUI
