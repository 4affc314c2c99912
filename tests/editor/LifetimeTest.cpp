// The editor through openings, closings and hosts with bad habits. The leak sanitizer watches the
// memory, the tests watch files and windows.
#include "tests/editor/EditorFixture.h"
#include "tests/editor/OpenFiles.h"

#include <array>
#include <memory>

namespace zelvatone::test {
namespace {

constexpr int kSustain = 20;

class EditorLifetime : public EditorTest {
protected:
    // Presses on the Sustain knob and turns it, without letting go.
    void beginDrag() {
        const Point centre = knobOf(kSustain).centre();
        window->movePointer(centre.x, centre.y - 20);
        window->press();
        window->movePointer(centre.x + 20, centre.y);
    }
    bool idleUntilCalled(VstInt32 opcode) {
        return idleUntil([&] { return !plugin->callsOf(opcode).empty(); });
    }
    void openAndClose(int times) {
        for (int round = 0; round < times; ++round) {
            EXPECT_TRUE(plugin->openEditor(window->handle()));
            plugin->idle();
            plugin->idle();
            plugin->closeEditor();
        }
    }
};

TEST_F(EditorLifetime, IdlesAndClosesWithoutEverOpening) {
    plugin->idle();
    plugin->closeEditor();
    plugin->idle();
    EXPECT_TRUE(openEditor());
}

TEST_F(EditorLifetime, IsServedWhenItsHostIdlesAnotherInstanceOnly) {
    ASSERT_TRUE(openEditor());
    const auto above = std::make_unique<HostWindow>();
    Plugin forgotten;
    ASSERT_TRUE(forgotten.openEditor(above->handle()));
    // It lies over the first one, and is seen once it is drawn.
    forgotten.setParameter(kSustain, 0.F);
    EXPECT_TRUE(idleUntilFrame(kSustain, 0));
    forgotten.setParameter(kSustain, 1.F);
    EXPECT_TRUE(idleUntilFrame(kSustain, 29));
    beginDrag();
    EXPECT_TRUE(idleUntilFrame(kSustain, 24));
    window->release();
    EXPECT_TRUE(idleUntil([&] { return !forgotten.callsOf(audioMasterEndEdit).empty(); }));
    forgotten.closeEditor();
}

TEST_F(EditorLifetime, LeavesNothingBehindWhenItOpensTwoHundredTimes) {
    openAndClose(1); // libraries open files of their own at the first use, and keep them
    const auto files = countOpenFiles();
    openAndClose(200);
    EXPECT_EQ(countOpenFiles(), files);
    EXPECT_TRUE(window->children().empty());
}

TEST_F(EditorLifetime, LeavesNothingBehindWhenItIsDrawnOften) {
    ASSERT_TRUE(openEditor());
    plugin->closeEditor();
    const auto files = countOpenFiles();
    for (int round = 0; round < 150; ++round) {
        ASSERT_TRUE(openEditor());
        plugin->closeEditor();
    }
    EXPECT_EQ(countOpenFiles(), files);
}

TEST_F(EditorLifetime, OpensAnewInAHostThatDoesNotClose) {
    ASSERT_TRUE(openEditor());
    const auto files = countOpenFiles();
    ASSERT_TRUE(openEditor());
    EXPECT_EQ(window->children().size(), 1U);
    EXPECT_EQ(countOpenFiles(), files);
}

TEST_F(EditorLifetime, ClosesWithThePlugin) {
    ASSERT_TRUE(openEditor());
    plugin = nullptr;
    EXPECT_TRUE(window->children().empty());
}

TEST_F(EditorLifetime, EndsTheGestureWhenThePluginGoesInsideADrag) {
    ASSERT_TRUE(openEditor());
    beginDrag();
    EXPECT_TRUE(idleUntilCalled(audioMasterAutomate));
    int ends = 0;
    plugin->onCall = [&](const HostCall& call) { ends += call.opcode == audioMasterEndEdit; };
    plugin = nullptr;
    EXPECT_EQ(ends, 1);
    EXPECT_TRUE(window->children().empty());
    window->release();
}

TEST_F(EditorLifetime, EndsTheGestureWhenItClosesInsideADrag) {
    ASSERT_TRUE(openEditor());
    beginDrag();
    EXPECT_TRUE(idleUntilCalled(audioMasterAutomate));
    plugin->closeEditor();
    EXPECT_EQ(plugin->callsOf(audioMasterBeginEdit).size(), 1U);
    EXPECT_EQ(plugin->callsOf(audioMasterEndEdit).size(), 1U);
    window->release();
    ASSERT_TRUE(openEditor());
    EXPECT_EQ(frameOf(kSustain), 24);
}

TEST_F(EditorLifetime, SurvivesAHostThatClosesItFromWithinACall) {
    for (const VstInt32 opcode : {audioMasterBeginEdit, audioMasterAutomate, audioMasterEndEdit}) {
        ASSERT_TRUE(openEditor());
        plugin->setParameter(kSustain, 0.5F);
        plugin->calls.clear();
        plugin->onCall = [&](const HostCall& call) {
            if (call.opcode == opcode) {
                plugin->onCall = nullptr;
                plugin->closeEditor();
            }
        };
        beginDrag();
        window->release();
        EXPECT_TRUE(idleUntilCalled(opcode));
        idleAWhile();
        EXPECT_TRUE(window->children().empty());
        EXPECT_EQ(plugin->callsOf(audioMasterEndEdit).size(), 1U) << opcode;
    }
}

TEST_F(EditorLifetime, SurvivesAHostThatDestroysTheParentFirst) {
    ASSERT_TRUE(openEditor());
    window->destroy();
    plugin->setParameter(kSustain, 0.F);
    idleAWhile();
    plugin->closeEditor();
    window = std::make_unique<HostWindow>();
    ASSERT_TRUE(openEditor());
    EXPECT_EQ(frameOf(kSustain), 0);
}

TEST_F(EditorLifetime, SurvivesAParentThatIsDestroyedInsideADrag) {
    ASSERT_TRUE(openEditor());
    beginDrag();
    EXPECT_TRUE(idleUntilCalled(audioMasterAutomate));
    window->destroy();
    EXPECT_TRUE(idleUntilCalled(audioMasterEndEdit));
    window->release();
    plugin->closeEditor();
    EXPECT_EQ(plugin->callsOf(audioMasterEndEdit).size(), 1U);
    window = std::make_unique<HostWindow>();
}

// Some instances of the plug-in beside the fixture's, each with a window of its own.
template<std::size_t count>
struct Instances {
    std::array<HostWindow, count> windows;
    std::array<Plugin, count> plugins;

    void open() {
        for (std::size_t i = 0; i < count; ++i) {
            EXPECT_TRUE(plugins[i].openEditor(windows[i].handle()));
        }
    }
};

TEST_F(EditorLifetime, ShowsTwoInstancesThatDoNotDisturbEachOther) {
    ASSERT_TRUE(openEditor());
    Instances<1> other;
    other.open();
    Plugin& second = other.plugins[0];
    // The other's window lies on top of this one.
    EXPECT_TRUE(idleUntil([&] {
        second.idle();
        return frameOf(kSustain) == 20;
    }));
    second.setParameter(kSustain, 0.F);
    EXPECT_TRUE(idleUntil([&] {
        second.idle();
        return frameOf(kSustain) == 0;
    }));
    const Point centre = knobOf(kSustain).centre();
    other.windows[0].movePointer(centre.x, centre.y - 20);
    other.windows[0].press();
    other.windows[0].movePointer(centre.x + 20, centre.y);
    other.windows[0].release();
    EXPECT_TRUE(idleUntil([&] {
        second.idle();
        return !second.callsOf(audioMasterEndEdit).empty();
    }));
    EXPECT_TRUE(plugin->calls.empty());
    EXPECT_FLOAT_EQ(plugin->parameter(kSustain), 0.7F);
    second.closeEditor();
    other.windows[0].hide();
    EXPECT_TRUE(idleUntilFrame(kSustain, 20));
}

TEST_F(EditorLifetime, ShowsTenInstancesAtOnce) {
    const auto files = countOpenFiles();
    {
        Instances<10> ten;
        ten.open();
        for (int round = 0; round < 150; ++round) {
            for (Plugin& each : ten.plugins) {
                each.setParameter(kSustain, 1.F);
                each.idle();
            }
        }
        // From the top window down.
        for (std::size_t i = 10; i-- > 0;) {
            EXPECT_EQ(ten.windows[i].children().size(), 1U);
            EXPECT_TRUE(idleUntil([&] {
                ten.plugins[i].idle();
                return frameOf(kSustain) == 29;
            })) << i;
            ten.plugins[i].closeEditor();
            EXPECT_TRUE(ten.windows[i].children().empty());
            ten.windows[i].hide();
        }
    }
    EXPECT_EQ(countOpenFiles(), files);
}

} // namespace
} // namespace zelvatone::test
