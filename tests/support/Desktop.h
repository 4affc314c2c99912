// What a user sees of programs' windows, and the user's hands on them.
#pragma once

#include <xcb/xcb.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zelvatone {

// On the X server that DISPLAY names. Nothing but the windows that programs open is on it, so they
// lie at its top left.
class Desktop {
public:
    Desktop();

    // Waits for a window of that title. Throws after ten seconds.
    xcb_window_t windowCalled(const std::string& title) const;
    // Waits for a window in it, which a plug-in made. Throws after ten seconds.
    xcb_window_t windowInside(xcb_window_t parent) const;
    // Waits until it is that large. Throws after ten seconds.
    void waitForSize(xcb_window_t window, int width, int height) const;

    struct Sizes {
        int smallest[2]; // width and height
        int largest[2];
    };
    // What the user may make of it by dragging its frame.
    Sizes sizes(xcb_window_t window) const;

    struct Place {
        int x;
        int y;
    };
    // Left button down at the first place, up at the last.
    void drag(const std::vector<Place>& path) const;
    void clickCloseButton(xcb_window_t window) const;
    // Without asking the program.
    void destroy(xcb_window_t window) const;

private:
    std::optional<xcb_window_t> find(const std::string& title) const;
    xcb_atom_t atom(const std::string& name) const;
    void fake(std::uint8_t type, std::uint8_t detail, int x, int y) const;

    struct Disconnect {
        void operator()(xcb_connection_t* open) const { xcb_disconnect(open); }
    };
    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    xcb_window_t root_;
};

} // namespace zelvatone
