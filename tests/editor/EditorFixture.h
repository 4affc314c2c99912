// A plug-in, a host's window, and what the user sees and does in it.
#pragma once

#include "tests/editor/Face.h"
#include "tests/editor/PluginHost.h"
#include "tests/vstgui/HostWindow.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace zelvatone::test {

using VSTGUI::test::Host;
using VSTGUI::test::HostWindow;

class EditorTest : public testing::Test {
protected:
    void SetUp() override;

    // Opens the editor in the window and idles until it is drawn. Returns whether it is.
    bool openEditor();
    // Idles `hz` times a second until `isReached`. Returns whether it was, in ten seconds.
    bool idleUntil(const std::function<bool()>& isReached, int hz = 60);
    // Idles a few times, for what is not to happen.
    void idleAWhile();

    Screenshot look() const { return window->screenshot(0, 0, kWidth, kHeight); }
    // Which of its 30 pictures the knob shows; -1 for none of them.
    int frameOf(int parameter) const;
    bool idleUntilFrame(int parameter, int frame) {
        return idleUntil([&] { return frameOf(parameter) == frame; });
    }
    // What the display of a knob shows.
    Screenshot displayOf(int parameter) const;
    // The same after the editor was closed and opened, which shows the text of the value.
    Screenshot freshDisplayOf(int parameter);

    std::unique_ptr<HostWindow> window;
    std::unique_ptr<Plugin> plugin; // dies before its window
};

} // namespace zelvatone::test
