// The editor when its window or the whole display goes away, or was never there.
#include "tests/editor/EditorFixture.h"
#include "tests/editor/OpenFiles.h"
#include "tests/vstgui/XServer.h"

#include <cstdlib>
#include <optional>
#include <string>

namespace zelvatone::test {
namespace {

using VSTGUI::test::XServer;

constexpr int kSustain = 20;

class LostDisplay : public EditorTest {
protected:
    // Everything that a host goes on doing with an editor that it believes to be open.
    void useEditor() {
        plugin->setParameter(kSustain, 0.F);
        plugin->setProgram(1);
        plugin->render();
        idleAWhile();
    }
    // The display is back, as after a new login. The host makes a new window.
    void openOnNewDisplay() {
        ASSERT_EQ(XServer::start(), "");
        window = std::make_unique<HostWindow>();
        ASSERT_TRUE(openEditor());
        plugin->setParameter(kSustain, 0.F);
        EXPECT_TRUE(idleUntilFrame(kSustain, 0));
    }
    void beginDrag() {
        const Point centre = knobOf(kSustain).centre();
        window->movePointer(centre.x, centre.y - 20);
        window->press();
        window->movePointer(centre.x + 20, centre.y);
        EXPECT_TRUE(idleUntil([&] { return !plugin->callsOf(audioMasterAutomate).empty(); }));
    }
};

// Names the display for as long as it lives; none for a program that was started without one.
class DisplayName {
public:
    explicit DisplayName(const char* name) {
        if (const char* before = std::getenv("DISPLAY")) {
            before_ = before;
        }
        set(name);
    }
    ~DisplayName() { set(before_ ? before_->c_str() : nullptr); }
    DisplayName(const DisplayName&) = delete;
    DisplayName& operator=(const DisplayName&) = delete;

private:
    static void set(const char* name) {
        if (name != nullptr) {
            setenv("DISPLAY", name, 1);
        } else {
            unsetenv("DISPLAY");
        }
    }
    std::optional<std::string> before_;
};

TEST_F(LostDisplay, PluginWorksOnAndEditorOpensAgain) {
    ASSERT_TRUE(openEditor());
    XServer::kill();
    useEditor();
    plugin->closeEditor();
    useEditor();
    openOnNewDisplay();
}

TEST_F(LostDisplay, PluginClosesWithItsEditor) {
    ASSERT_TRUE(openEditor());
    XServer::kill();
    plugin = nullptr;
    plugin = std::make_unique<Plugin>();
    openOnNewDisplay();
}

TEST_F(LostDisplay, DragEndsItsGestureOnce) {
    ASSERT_TRUE(openEditor());
    beginDrag();
    XServer::kill();
    idleAWhile();
    plugin->closeEditor();
    EXPECT_EQ(plugin->callsOf(audioMasterBeginEdit).size(), 1U);
    EXPECT_EQ(plugin->callsOf(audioMasterEndEdit).size(), 1U);
    openOnNewDisplay();
}

TEST_F(LostDisplay, EditorLeavesNoFileOpen) {
    openOnNewDisplay(); // libraries open files of their own at the first use, and keep them
    plugin->closeEditor();
    window = nullptr;
    const auto files = countOpenFiles();
    for (int round = 0; round < 3; ++round) {
        openOnNewDisplay();
        XServer::kill();
        idleAWhile();
        plugin->closeEditor();
        window = nullptr;
        EXPECT_EQ(countOpenFiles(), files) << round;
    }
}

using LostWindow = LostDisplay;

TEST_F(LostWindow, PluginWorksOnAndEditorOpensAgain) {
    ASSERT_TRUE(openEditor());
    window->destroyChildren();
    useEditor();
    plugin->closeEditor();
    EXPECT_TRUE(window->children().empty());
    plugin->setProgram(0);
    EXPECT_TRUE(openEditor());
}

TEST_F(LostWindow, DragEndsItsGestureOnce) {
    ASSERT_TRUE(openEditor());
    beginDrag();
    window->destroyChildren();
    EXPECT_TRUE(idleUntil([&] { return !plugin->callsOf(audioMasterEndEdit).empty(); }));
    window->release();
    plugin->closeEditor();
    EXPECT_EQ(plugin->callsOf(audioMasterEndEdit).size(), 1U);
}

// The plug-in says that it opened: hosts that are told otherwise may unload it, sound and all.
class MissingDisplay : public LostDisplay, public testing::WithParamInterface<const char*> {};

TEST_P(MissingDisplay, PluginWorksOnAndEditorOpensLater) {
    const auto files = countOpenFiles();
    {
        const DisplayName none(GetParam());
        EXPECT_TRUE(plugin->openEditor(window->handle()));
        useEditor();
        EXPECT_TRUE(plugin->calls.empty());
        plugin->closeEditor();
    }
    EXPECT_EQ(countOpenFiles(), files);
    plugin->setProgram(0);
    EXPECT_TRUE(openEditor());
}

// No name, a server that does not run, and what is not the name of a display.
INSTANTIATE_TEST_SUITE_P(Names, MissingDisplay, testing::Values(nullptr, ":60999", "nowhere"));

} // namespace
} // namespace zelvatone::test
