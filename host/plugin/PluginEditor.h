// The editor that a plug-in brings along, from its opening to its close.
#pragma once

#include "host/plugin/HostedPlugin.h"
#include "host/window/EditorWindow.h"

namespace zelvatone {

// Everything on the thread that made the plug-in.
class PluginEditor {
public:
    // Throws InputError when the plug-in has no editor.
    explicit PluginEditor(HostedPlugin& plugin);
    // Closes it.
    ~PluginEditor();
    PluginEditor(const PluginEditor&) = delete;
    PluginEditor& operator=(const PluginEditor&) = delete;

    // What the editor wants to have; some know it before they are open, some only then. Throws
    // InputError when it names no size that a window can have.
    WindowSize size();
    // Opens the editor inside `window`, which it must not outlive. Throws InputError when the
    // plug-in does not open it.
    void open(EditorWindow& window);
    // Gives the editor its turn. Call it about 30 times a second.
    void idle();

private:
    HostedPlugin& plugin_;
    bool isOpen_ = false;
};

} // namespace zelvatone
