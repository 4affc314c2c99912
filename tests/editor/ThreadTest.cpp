// Parameters that are set on another thread than the one that opens, draws and closes the editor.
// The sanitizer for threads watches these tests too:
//   cmake --preset tsan && cmake --build --preset tsan --target EditorTest EditorPartsTest
//   ctest --preset tsan -R 'EditorThreads|ControlGate|OpensWhileAnotherThread'
#include "tests/editor/EditorFixture.h"

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
