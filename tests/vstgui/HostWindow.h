// A host's window, and the user's hands on it.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace VSTGUI::test {

// A colour as 0xRRGGBB.
using Pixel = std::uint32_t;

// A picture of a part of the screen.
struct Screenshot {
    int width;
    int height;
    std::vector<Pixel> pixels;

    Pixel at(int x, int y) const { return pixels.at(static_cast<std::size_t>(y) * width + x); }
};

enum class Host {
    kPlain,          // maps itself and knows nothing of embedding
    kEmbedsStrictly, // shows a child only when the child's own property asks for it
    kTranslucent     // has pixels of 32 bits, with opacity
};

// A window of a program of its own (its own connection), away from the screen's edges. Every call
// returns after the server has done it.
class HostWindow {
public:
    explicit HostWindow(Host kind = Host::kPlain, int width = 717, int height = 477);
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    // As a host passes it to an editor.
    void* handle() const;
    void destroy();
    // Destroys what others have put into it.
    void destroyChildren();
    void hide();
    void show();
    std::vector<xcb_window_t> children() const;
    // Width and height of a child.
    std::pair<int, int> sizeOf(xcb_window_t child) const;
    // The numbers of a child's _XEMBED_INFO.
    std::vector<std::uint32_t> embedInfo(xcb_window_t child) const;
    bool isViewable(xcb_window_t candidate) const;
    // What a strict embedder does when it is told of something: maps the children that ask for it
    // and tells them that they are embedded.
    void embedChildren();
    void sendExpose(xcb_window_t child, int times);

    // The pointer, in the window's coordinates; may lie outside.
    void movePointer(int x, int y);
    void press(int button = 1);
    void release(int button = 1);
    void click(int x, int y, int button = 1);
    // Keys by what they do.
    void holdShift(bool down);
    void holdControl(bool down);
    void holdAlt(bool down);
    void typeKey();
    // Keys that have come to this window since the last call.
    int keysHeard();
    void takeFocus();
    bool hasFocus() const;

    Screenshot screenshot(int left, int top, int columns, int rows) const;
    // All bits of a pixel of the first child.
    std::uint32_t rawChildPixel(int x, int y) const;
    Pixel pixel(int x, int y) const { return screenshot(x, y, 1, 1).at(0, 0); }

private:
    void create(Host kind);
    void fake(std::uint8_t type, std::uint8_t detail, int x = 0, int y = 0);
    void holdKey(std::uint32_t symbol, bool down);
    void sync() const;

    struct Disconnect {
        void operator()(xcb_connection_t* open) const { xcb_disconnect(open); }
    };
    int width;
    int height;
    std::unique_ptr<xcb_connection_t, Disconnect> connection;
    xcb_screen_t* screen;
    xcb_window_t window;
};

} // namespace VSTGUI::test
