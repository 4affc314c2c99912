// The editor in a CLAP host's window.
#include "params/ParameterTable.h"
#include "tests/clap/InstanceFixture.h"
#include "tests/editor/Face.h"
#include "tests/editor/Waiting.h"
#include "tests/vstgui/HostWindow.h"
#include "tests/vstgui/XServer.h"

#include <cmath>
#include <functional>
#include <memory>
#include <string>

namespace zelvatone::test {

namespace {

using VSTGUI::test::HostWindow;

// An instance with its editor in a window of its own.
class EditorInstance {
public:
    EditorInstance() = default;
    ~EditorInstance() { gui.destroy(&instance.plugin()); }
    EditorInstance(const EditorInstance&) = delete;
    EditorInstance& operator=(const EditorInstance&) = delete;

    bool create() { return gui.create(&instance.plugin(), clap::kWindowX11, false); }
    bool openIn(const HostWindow& host) {
        clap::Window parent{.api = clap::kWindowX11, .pointer = nullptr};
        parent.x11 = reinterpret_cast<std::uintptr_t>(host.handle());
        return gui.setParent(&instance.plugin(), &parent) && gui.show(&instance.plugin());
    }
    bool open() {
        return create() && openIn(window) && idleUntil([this] { return frameOf(kRelease) != -1; });
    }
    bool idleUntil(const std::function<bool()>& isReached) {
        return zelvatone::test::idleUntil([&] { instance.fireTimers(); }, isReached);
    }
    int frameOf(ParameterIndex index) const { return frameShown(window, index); }
    // From the top a quarter of a turn to the right.
    void drag(ParameterIndex index) {
        const Point centre = knobOf(index).centre();
        window.movePointer(centre.x, centre.y - 20);
        window.press();
        window.movePointer(centre.x + 20, centre.y);
        const int requests = instance.flushRequests;
        EXPECT_TRUE(idleUntil([&] { return instance.flushRequests > requests + 1; }));
        window.release();
        const int moves = instance.flushRequests;
        EXPECT_TRUE(idleUntil([&] { return instance.flushRequests > moves; }));
    }
    double value(std::uint32_t id) const {
        double value = -1e9;
        params.getValue(&instance.plugin(), id, &value);
        return value;
    }

    HostWindow window;
    ClapInstance instance{clapLibrary(), kClapId};
    const clap::PluginGui& gui = *instance.extension<clap::PluginGui>(clap::kGuiId);
    const clap::PluginParams& params = *instance.extension<clap::PluginParams>(clap::kParamsId);
    InputList events;
    OutputList sent;
};

// A begin, values of which the last is that of the instance, an end: all of one parameter.
void expectOneGesture(const EditorInstance& editor, std::uint32_t id) {
    const auto& events = editor.sent.events;
    ASSERT_GE(events.size(), 3U);
    EXPECT_EQ(events.front().type, clap::kParamGestureBegin);
    EXPECT_EQ(events.back().type, clap::kParamGestureEnd);
    EXPECT_EQ(events[events.size() - 2].type, clap::kParamValue);
    EXPECT_EQ(events[events.size() - 2].value, editor.value(id));
    for (const OutputList::Event& event : events) {
        EXPECT_EQ(event.param, id);
    }
}

class ClapEditor : public testing::Test {
protected:
    void SetUp() override {
        if (const std::string why = VSTGUI::test::XServer::start(); !why.empty()) {
            GTEST_SKIP() << why;
        }
    }
};

TEST_F(ClapEditor, OpensInX11WindowsOnly) {
    EditorInstance editor;
    const clap::Plugin* plugin = &editor.instance.plugin();
    EXPECT_TRUE(editor.gui.isApiSupported(plugin, "x11", false));
    EXPECT_FALSE(editor.gui.isApiSupported(plugin, "x11", true));
    EXPECT_FALSE(editor.gui.isApiSupported(plugin, "wayland", false));
    EXPECT_FALSE(editor.gui.create(plugin, "win32", false));
    EXPECT_FALSE(editor.openIn(editor.window)) << "not created";
}

TEST_F(ClapEditor, SizeIsThatOfTheFaceTimesTheScaleOfTheHost) {
    EditorInstance editor;
    const clap::Plugin* plugin = &editor.instance.plugin();
    ASSERT_TRUE(editor.create());
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    EXPECT_TRUE(editor.gui.getSize(plugin, &width, &height));
    EXPECT_EQ(width, 717U);
    EXPECT_EQ(height, 477U);
    EXPECT_TRUE(editor.gui.setScale(plugin, 2.0));
    EXPECT_TRUE(editor.gui.getSize(plugin, &width, &height));
    EXPECT_EQ(width, 1434U);
    EXPECT_EQ(height, 954U);
    EXPECT_FALSE(editor.gui.canResize(plugin));
    EXPECT_TRUE(editor.gui.setSize(plugin, 1434, 954));
    EXPECT_FALSE(editor.gui.setSize(plugin, 717, 477));
}

TEST_F(ClapEditor, DragReachesTheHostAsAGestureInTheNextBlock) {
    EditorInstance editor;
    ASSERT_TRUE(editor.open());
    editor.drag(kMinModes);
    EXPECT_GT(editor.value(kMinModes), 50.0);
    EXPECT_EQ(editor.value(kMinModes), std::floor(editor.value(kMinModes)));
    editor.instance.activate(kClapRate, kClapFrames);
    editor.instance.play(64, editor.events, editor.sent);
    expectOneGesture(editor, kMinModes);
}

TEST_F(ClapEditor, DragReachesTheHostByAFlushToo) {
    EditorInstance editor;
    ASSERT_TRUE(editor.open());
    editor.drag(kChop);
    editor.params.flush(&editor.instance.plugin(), nullptr, &editor.sent.record());
    expectOneGesture(editor, kChop);
    editor.sent.events.clear();
    editor.params.flush(&editor.instance.plugin(), nullptr, &editor.sent.record());
    EXPECT_TRUE(editor.sent.events.empty());
}

TEST_F(ClapEditor, AutomationMovesTheKnobAndIsNotSentBack) {
    EditorInstance editor;
    ASSERT_TRUE(editor.open());
    editor.instance.activate(kClapRate, kClapFrames);
    editor.events.add(paramValue(10, kChop, 0.1));
    editor.instance.play(64, editor.events, editor.sent);
    EXPECT_TRUE(editor.idleUntil([&] { return editor.frameOf(kChop) == 0; }));
    EXPECT_TRUE(editor.sent.events.empty());
}

TEST_F(ClapEditor, ReopensWithTheValuesOfNow) {
    EditorInstance editor;
    ASSERT_TRUE(editor.open());
    editor.gui.destroy(&editor.instance.plugin());
    editor.events.add(paramValue(0, kMaxModes, 100.0));
    editor.params.flush(&editor.instance.plugin(), &editor.events.record(), nullptr);
    ASSERT_TRUE(editor.open());
    EXPECT_EQ(editor.frameOf(kMaxModes), 29);
}

TEST_F(ClapEditor, TwoInstancesShowTheirOwnValues) {
    EditorInstance one;
    one.events.add(paramValue(0, kMaxModes, 100.0));
    one.params.flush(&one.instance.plugin(), &one.events.record(), nullptr);
    ASSERT_TRUE(one.open());
    one.window.hide();
    EditorInstance other;
    ASSERT_TRUE(other.open());
    EXPECT_EQ(other.frameOf(kMaxModes), 5); // 20 of 100: 0.2 x 29 = 5.8
    other.window.hide();
    one.window.show();
    EXPECT_TRUE(one.idleUntil([&] { return one.frameOf(kMaxModes) == 29; }));
}

TEST_F(ClapEditor, HostWithoutTimersGetsNoEditor) {
    ClapInstance instance(clapLibrary(), kClapId, ClapInstance::Timers::kNone);
    const auto* gui = instance.extension<clap::PluginGui>(clap::kGuiId);
    const HostWindow window;
    clap::Window parent{.api = clap::kWindowX11, .pointer = nullptr};
    parent.x11 = reinterpret_cast<std::uintptr_t>(window.handle());
    ASSERT_TRUE(gui->create(&instance.plugin(), clap::kWindowX11, false));
    EXPECT_FALSE(gui->setParent(&instance.plugin(), &parent));
    gui->destroy(&instance.plugin());
}

// A host that forgets the editor: it goes with the plug-in.
TEST_F(ClapEditor, PluginThatIsDestroyedClosesItsWindow) {
    const HostWindow window;
    {
        ClapInstance instance(clapLibrary(), kClapId);
        const auto* gui = instance.extension<clap::PluginGui>(clap::kGuiId);
        clap::Window parent{.api = clap::kWindowX11, .pointer = nullptr};
        parent.x11 = reinterpret_cast<std::uintptr_t>(window.handle());
        ASSERT_TRUE(gui->create(&instance.plugin(), clap::kWindowX11, false));
        ASSERT_TRUE(gui->setParent(&instance.plugin(), &parent));
        instance.fireTimers();
        EXPECT_EQ(window.children().size(), 1U);
    }
    EXPECT_TRUE(window.children().empty());
}

} // namespace

} // namespace zelvatone::test
