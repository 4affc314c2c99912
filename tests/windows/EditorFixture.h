// A plug-in, a host's window, and the user's hands on what it shows.
#pragma once

#include "tests/plugin/LoadedPlugin.h"
#include "tests/windows/HostWindow.h"

namespace zelvatone::test {

class WindowsEditor : public LoadedPluginTest {
protected:
    WindowsEditor() { open(); }
    ~WindowsEditor() override { plugin.ask(effEditClose); }

    void open() const {
        plugin.ask(effEditOpen, 0, 0, window.handle());
        idle();
    }
    // A turn of the host's loop.
    void idle() const {
        HostWindow::pump();
        plugin.ask(effEditIdle);
        HostWindow::pump();
    }
    // What the host was told of the user's edits, as text: "begin 20", "20 = 0.8333", "end 20".
    std::vector<std::string> edits() const;

    HostWindow window;
};

// Of parameter 20, which is at 0.7 in the first program.
inline constexpr int kSustain = 20;
inline constexpr int kKnobX = 452, kKnobY = 421; // its centre

} // namespace zelvatone::test
