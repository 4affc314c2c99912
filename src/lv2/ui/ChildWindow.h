// The X11 window that a host gets for the editor.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>

namespace zelvatone::lv2 {

// A window in a host's window, of a size that the editor fills. Hosts want its number, which the
// editor's own window does not tell, and move or reparent it; they never get its events.
class ChildWindow {
public:
    // Sizes in pixels. Shown as soon as the parent is. Throws a std::runtime_error without a
    // display or if the parent is gone.
    ChildWindow(xcb_window_t parent, std::int32_t width, std::int32_t height);
    // When it returns the window is gone.
    ~ChildWindow();
    ChildWindow(const ChildWindow&) = delete;
    ChildWindow& operator=(const ChildWindow&) = delete;

    xcb_window_t id() const { return id_; }

private:
    struct Disconnect {
        void operator()(xcb_connection_t* open) const { xcb_disconnect(open); }
    };

    // Of its own: the host's may be in the middle of a request.
    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    xcb_window_t id_;
};

} // namespace zelvatone::lv2
