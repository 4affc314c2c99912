// What a host does on other threads than the one that opens, draws and closes the editor: it plays,
// sets parameters, selects and renames programs. The thread sanitizer watches these tests too.
#include "tests/editor/EditorFixture.h"

#include <atomic>
#include <chrono>
#include <thread>

namespace zelvatone::test {
namespace {

using Clock = std::chrono::steady_clock;

class EditorThreads : public EditorTest {
protected:
    // Sets every parameter over and over for `seconds`, at the end to 1, while `meanwhile` runs on
    // this thread again and again.
    template<class Action>
    void setParametersFor(int seconds, Action meanwhile) {
        const auto end = Clock::now() + std::chrono::seconds(seconds);
        std::thread other([this, end] {
            for (int step = 0; Clock::now() < end; ++step) {
                setAll(static_cast<float>(step % 101) / 100);
            }
            setAll(1.F);
        });
        while (Clock::now() < end) {
            meanwhile();
        }
        other.join();
    }

    void expectEveryKnobAtItsEnd() {
        for (const Knob& knob : kAllKnobs) {
            EXPECT_TRUE(idleUntilFrame(knob.parameter, 29)) << knob.parameter;
        }
    }

private:
    void setAll(float value) {
        for (VstInt32 parameter = 0; parameter < 23; ++parameter) {
            plugin->setParameter(parameter, value);
        }
    }
};

TEST_F(EditorThreads, SetsParametersForTenSecondsWhileTheEditorDraws) {
    ASSERT_TRUE(openEditor());
    setParametersFor(10, [&] {
        plugin->idle();
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    });
    expectEveryKnobAtItsEnd();
}

TEST_F(EditorThreads, SetsParametersWhileTheEditorOpensAndCloses) {
    setParametersFor(5, [&] {
        EXPECT_TRUE(plugin->openEditor(window->handle()));
        plugin->idle();
        plugin->closeEditor();
    });
    ASSERT_TRUE(openEditor());
    expectEveryKnobAtItsEnd();
}

TEST_F(EditorThreads, RendersWhileTheEditorOpensAndCloses) {
    std::atomic<bool> isDone = false;
    std::thread audio([&] {
        while (!isDone) {
            plugin->render();
        }
    });
    for (int round = 0; round < 5; ++round) {
        EXPECT_TRUE(openEditor());
        plugin->closeEditor();
    }
    isDone = true;
    audio.join();
}

TEST_F(EditorThreads, SelectsAndRenamesProgramsWhileTheEditorDrawsAndAThirdThreadRenders) {
    ASSERT_TRUE(openEditor());
    std::atomic<bool> isDone = false;
    std::thread audio([&] {
        while (!isDone) {
            plugin->render();
        }
    });
    std::thread programs([&] {
        for (VstInt32 program = 0; !isDone; program = (program + 1) % 42) {
            char name[] = "A name longer than eight";
            char read[25] = {};
            plugin->setProgram(program);
            plugin->dispatch(effSetProgramName, 0, name);
            plugin->dispatch(effGetProgramNameIndexed, 41 - program, read);
        }
    });
    for (int round = 0; round < 100; ++round) {
        char read[25] = {};
        plugin->idle();
        plugin->dispatch(effGetProgramName, 0, read);
        EXPECT_LE(plugin->dispatch(effGetProgram), 41);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    isDone = true;
    audio.join();
    programs.join();
}

TEST_F(EditorThreads, SetsParametersWhileTheUserTurnsAKnob) {
    ASSERT_TRUE(openEditor());
    const Point centre = knobOf(20).centre();
    window->movePointer(centre.x, centre.y - 20);
    window->press();
    int x = 0;
    setParametersFor(3, [&] {
        window->movePointer(centre.x + x++ % 20, centre.y - 20);
        plugin->idle();
    });
    window->release();
    EXPECT_TRUE(idleUntil([&] { return !plugin->callsOf(audioMasterEndEdit).empty(); }));
    EXPECT_EQ(plugin->callsOf(audioMasterBeginEdit).size(), 1U);
    EXPECT_EQ(plugin->callsOf(audioMasterEndEdit).size(), 1U);
}

} // namespace
} // namespace zelvatone::test
