// The editor for formats that speak in units: in a window of a host, beside an instrument that may
// be in another file.
#pragma once

#include "params/ParameterTable.h"

#include <array>
#include <cstdint>
#include <memory>

struct AEffect;

namespace zelvatone {

class ShadowEngine;
class VSTGuiVSTInterface;

// What the user does, in the order in which it happens. User-interface thread, from within
// EditorPanel::idle or the toolkit's handling of the window. The panel must not be destroyed from
// within; it may be closed.
class EditorListener {
public:
    // The knob is grasped, moved or let go. A turn of the wheel is all three.
    virtual void editBegins(ParameterIndex index) = 0;
    // `value`: units, in the parameter's range and whole where the parameter is.
    virtual void valueEdited(ParameterIndex index, float value) = 0;
    virtual void editEnds(ParameterIndex index) = 0;

protected:
    ~EditorListener() = default;
};

// The editor as it is in the VST 2.4 file, with a copy of the values and without a sound. The panel
// is the host of that editor; its owner tells it every value that changes elsewhere, and learns
// every edit. User-interface thread.
class EditorPanel {
public:
    // `listener` is not owned and outlives the panel.
    explicit EditorPanel(EditorListener& listener);
    // Closes the window.
    ~EditorPanel();
    EditorPanel(const EditorPanel&) = delete;
    EditorPanel& operator=(const EditorPanel&) = delete;

    // From its next opening on the window is `scale` times as large, 1 at first: the nearest of 1
    // to 3 in quarters.
    void setScale(double scale);

    struct Size {
        std::int32_t width, height; // pixels
    };
    // Of the window that is opened next, or is open.
    Size size() const;
    // Opens the editor in the host's window `parent`: an X11 window's number or an HWND, as a
    // pointer. Closes an earlier one.
    void open(void* parent);
    void close();
    bool isOpen() const { return isOpen_; }
    // Handles what came in and draws what has changed; for a timer of 20 to 60 calls a second.
    void idle();

    // Shows `value` (units), if it is another one than that shown. A knob in the user's hand keeps
    // its value, and shows the last one given when it is let go.
    void show(ParameterIndex index, float value);

private:
    static std::intptr_t callHost(AEffect* effect, std::int32_t opcode, std::int32_t index,
                                  std::intptr_t value, void* ptr, float opt);
    std::intptr_t handleEditorCall(std::int32_t opcode, ParameterIndex index);
    void endEdit(ParameterIndex index);
    void store(ParameterIndex index, float value);

    EditorListener& listener_;
    std::unique_ptr<ShadowEngine> values_;
    std::unique_ptr<VSTGuiVSTInterface> plugin_; // its parameters are those of values_
    struct Grasp {
        bool isHeld = false;
        bool hasMissed = false; // was given a value meanwhile
        float missed = 0.0F;
    };
    std::array<Grasp, kParameterCount> grasps_{};
    bool isOpen_ = false;
};

} // namespace zelvatone
