// One instance in the hands of three threads, as hosts have them: one plays, one sets and reads
// what the host's window shows, one does what the editor and automation do. What they make is
// random; that none of them disturbs another is for the thread sanitizer to see.
#include "engine/ZelvatoneEngine.h"
#include "plugin/VSTGuiVSTInterface.h"
#include "tests/plugin/HostedEffect.h"
#include "tests/plugin/PlainHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <string>
#include <thread>

namespace {

constexpr VstInt32 kUniqueID = 61546;
constexpr VstInt32 kParameters = 23;
constexpr VstInt32 kPrograms = 42;
constexpr int kBlocks = 100;
constexpr VstInt32 kFrames = 256;

class Threads : public ::testing::Test {
protected:
    ~Threads() override { effect.ask(effClose); }

    void play() {
        for (int block = 0; block < kBlocks; ++block) {
            const int note = 40 + block % 32;
            effect.send({{0x90, note, 100, block % kFrames},
                         {0xE0, 0, block % 128, 20},
                         {0x80, note - 3, 0, 30}});
            if (block % 50 == 0) {
                effect.send({{0xB0, 123, 0}});
            }
            finite = finite && std::isfinite(effect.render(kFrames).peak());
        }
        isPlayed = true;
    }

    void setAndShow() {
        for (VstInt32 step = 0; !isPlayed; ++step) {
            const VstInt32 index = step % kParameters;
            effect.setParameter(index, static_cast<float>(step % 101) / 100.0F);
            effect.text(effGetParamDisplay, index);
            effect.ask(effSetProgram, 0, step / 50 % kPrograms);
            std::string name(1 + static_cast<std::size_t>(step % 30), 'n');
            effect.ask(effSetProgramName, 0, 0, name.data());
            effect.text(effGetProgramName);
        }
    }

    void editAndAutomate() {
        for (VstInt32 step = 0; !isPlayed; ++step) {
            const VstInt32 index = step % kParameters;
            plugin->beginEdit(index);
            plugin->setParameterAutomated(index, static_cast<float>(step % 97) / 96.0F);
            plugin->endEdit(index);
            effect.getParameter(index);
            effect.text(effGetParamDisplay, index);
            longest =
                std::max(longest, effect.text(effGetProgramNameIndexed, step % kPrograms).size());
            effect.ask(effGetProgramNameIndexed, 0, step % kPrograms, text);
            longest = std::max(longest, std::strlen(text));
            program = effect.ask(effGetProgram);
        }
    }

    zelvatone::ZelvatoneEngine engine;
    zelvatone::VSTGuiVSTInterface* plugin =
        new zelvatone::VSTGuiVSTInterface(plainHostCallback, &engine, kUniqueID);
    HostedEffect effect{plugin->getAeffect()};
    std::atomic<bool> isPlayed = false;
    bool finite = true;
    VstIntPtr program = 0;
    std::size_t longest = 0;
    char text[256] = {};
};

TEST_F(Threads, PlaySetAndEditOneInstanceAtOnce) {
    effect.ask(effMainsChanged, 0, 1);
    std::thread audio([this] { play(); });
    std::thread window([this] { setAndShow(); });
    editAndAutomate();
    audio.join();
    window.join();
    EXPECT_LE(longest, 24U);
    EXPECT_GE(longest, 1U);
    EXPECT_LT(program, kPrograms);
}

} // namespace
