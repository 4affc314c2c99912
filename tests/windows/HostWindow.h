// A host's window on Windows, and the user's hands on it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

namespace zelvatone::test {

// A picture of a window; each pixel is 0xRRGGBB.
struct WindowPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels; // from the top left, row by row

    std::uint32_t at(int x, int y) const {
        return pixels.at(static_cast<std::size_t>(y) * width + x);
    }
};

// A window with room for an editor, shown.
class HostWindow {
public:
    explicit HostWindow(int width = 717, int height = 477);
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    HWND handle() const { return window; }
    // The window that an editor has put inside; null if there is none.
    HWND editor() const { return GetWindow(window, GW_CHILD); }
    int children() const;

    // Handles every message that has come in, as a host's loop does.
    static void pump();
    // What this window's own code has received from the keyboard and of the focus.
    int keysHeard = 0;

    // Messages of the mouse to the editor, in its coordinates, handled when the call returns.
    void press(int x, int y, WPARAM keys = MK_LBUTTON) const;
    void move(int x, int y, WPARAM keys = MK_LBUTTON) const;
    void release(int x, int y, WPARAM keys = 0) const;
    void click(int x, int y) const;
    void wheel(int x, int y, int notches, WPARAM keys = 0) const;

    WindowPicture picture() const;

private:
    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    int width;
    int height;
    HWND window = nullptr;
};

} // namespace zelvatone::test
