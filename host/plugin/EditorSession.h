// A plug-in's editor in a window of ours, with its turns 30 times a second.
#pragma once

#include "host/plugin/EditLog.h"
#include "host/plugin/PluginEditor.h"

namespace zelvatone {

// Everything on the thread that made the plug-in, which must outlive this.
class EditorSession {
public:
    // Opens window and editor; the window is called after the plug-in's program. Throws InputError
    // when the plug-in has no editor, does not open it, or there is no display.
    EditorSession(HostedPlugin& plugin, WindowUse use);

    // One turn: what happens to the window within a thirtieth of a second, then the editor's idle.
    // False once the user has closed the window.
    bool turn();

    EditorWindow& window() { return *window_; }
    EditLog& log() { return log_; }

private:
    EditLog log_;
    std::unique_ptr<EditorWindow> window_;
    PluginEditor editor_; // lies in the window, so it is closed first
    std::chrono::steady_clock::time_point nextTurn_;
};

} // namespace zelvatone
