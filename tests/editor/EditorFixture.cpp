#include "tests/editor/EditorFixture.h"

#include "tests/editor/Waiting.h"
#include "tests/vstgui/XServer.h"

#include <chrono>
#include <thread>

namespace zelvatone::test {

void EditorTest::SetUp() {
    if (const std::string why = VSTGUI::test::XServer::start(); !why.empty()) {
        GTEST_SKIP() << why;
    }
    window = std::make_unique<HostWindow>();
    plugin = std::make_unique<Plugin>();
}

bool EditorTest::openEditor() {
    if (!plugin->openEditor(window->handle())) {
        return false;
    }
    // The badge and the help button came last: with the corner and a knob, all is there.
    static const Pixel corner = readPicture("BACKGROUND.PNG").at(kWidth - 1, kHeight - 1);
    return idleUntil(
        [&] { return window->pixel(kWidth - 1, kHeight - 1) == corner && frameOf(21) != -1; });
}

bool EditorTest::idleUntil(const std::function<bool()>& isReached, int hz) {
    return test::idleUntil([this] { plugin->idle(); }, isReached, hz);
}

void EditorTest::idleAWhile() {
    for (int i = 0; i < 10; ++i) {
        plugin->idle();
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

int EditorTest::frameOf(int parameter) const {
    return frameShown(*window, parameter);
}

Screenshot EditorTest::displayOf(int parameter) const {
    const Area area = knobOf(parameter).display();
    return window->screenshot(area.left, area.top, area.width(), area.height());
}

Screenshot EditorTest::freshDisplayOf(int parameter) {
    plugin->closeEditor();
    EXPECT_TRUE(openEditor());
    return displayOf(parameter);
}

} // namespace zelvatone::test
