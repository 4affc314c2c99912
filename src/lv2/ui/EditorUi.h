// The editor in a host's window.
#pragma once

#include "editorpanel/EditorPanel.h"
#include "lv2/ui/ChildWindow.h"

#include <lv2/ui/ui.h>

#include <cstdint>
#include <optional>

namespace zelvatone::lv2 {

// What a host gives to an editor.
struct EditorHost {
    LV2UI_Write_Function write = nullptr;
    LV2UI_Controller controller = nullptr;
    std::uintptr_t parent = 0;            // an X11 window
    const LV2UI_Touch* touch = nullptr;   // null in a host that does not want to know
    const LV2UI_Resize* resize = nullptr; // null in a host that looks at the window instead
    float scale = 1;                      // how much larger the editor is to be
};

// Knows the ports alone: the sound is another file's, or even another process's. User-interface
// thread.
class EditorUi final : private EditorListener {
public:
    // Opens the editor. Throws a std::runtime_error if the window cannot be made.
    explicit EditorUi(const EditorHost& host);
    ~EditorUi();
    EditorUi(const EditorUi&) = delete;
    EditorUi& operator=(const EditorUi&) = delete;

    xcb_window_t window() const { return window_->id(); }
    // The port has `value`, set by the host or by this editor.
    void show(std::uint32_t port, float value);
    void idle() { panel_.idle(); }

private:
    void editBegins(ParameterIndex index) override { touch(index, true); }
    void valueEdited(ParameterIndex index, float value) override;
    void editEnds(ParameterIndex index) override { touch(index, false); }
    void touch(ParameterIndex index, bool isHeld) const;

    const EditorHost host_;
    EditorPanel panel_;
    std::optional<ChildWindow> window_; // from the constructor on
};

} // namespace zelvatone::lv2
