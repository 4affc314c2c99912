// A window of the host's own, for a plug-in's editor to open in.
#pragma once

#include "host/picture/TrueColourPicture.h"

#include <chrono>
#include <memory>
#include <string>

namespace zelvatone {

struct WindowSize {
    int width = 0; // pixels
    int height = 0;
};

// All of it belongs to the thread that made the window.
class EditorWindow {
public:
    EditorWindow() = default;
    virtual ~EditorWindow() = default;
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;

    // What plug-ins are given as the parent of their window.
    virtual void* handle() const = 0;
    virtual void resize(const WindowSize& size) = 0;

    // Handles what happens to the window until `end`, then comes back; at once when the user has
    // closed it, with false. Throws InputError when the display has gone away.
    virtual bool handleEvents(std::chrono::steady_clock::time_point end) = 0;

    // Presses and releases the left button over the editor at x and y, without the user's pointer.
    virtual void click(int x, int y) = 0;
    // What is to be seen inside the window. Throws InputError when it is not to be had.
    virtual TrueColourPicture picture() = 0;
};

enum class WindowUse {
    kWork,    // in a frame with title and close button
    kPicture, // above all others and without a frame, so that nothing covers it
};

// One implementation a platform. Throws InputError when there is no display to open it on.
std::unique_ptr<EditorWindow> openEditorWindow(const std::string& title, const WindowSize& size,
                                               WindowUse use);

} // namespace zelvatone
