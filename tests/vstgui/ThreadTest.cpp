// Values and texts set by other threads while the frame is drawn. What is worth here is the run
// under the thread sanitizer; without it, the order and the wholeness of what is shown.
#include "tests/vstgui/Fixtures.h"

#include <thread>

namespace VSTGUI::test {
namespace {

class Threads : public WindowTest {};

TEST_F(Threads, MaySetValuesAndTextsWhileTheFrameIsDrawn) {
    constexpr int kThreads = 3;
    HostWindow host;
    CFrame* frame = openFrame(host);
    CAnimKnob* knob = addKnob(*frame);
    auto* label = new CTextLabel(CRect(276, 154, 364, 174));
    label->setTransparency(true);
    frame->addView(label);

    std::atomic<bool> isOver = false;
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, letter = static_cast<char>('A' + thread)] {
            for (int count = 0; !isOver; ++count) {
                knob->setValue(static_cast<float>(count % 30) / 29.F);
                label->setText(std::string(1 + count % 30, letter).c_str());
                if (count % 1000 == 0) {
                    std::this_thread::yield();
                }
            }
        });
    }
    const auto end = Recorder::Clock::now() + std::chrono::seconds(3);
    while (Recorder::Clock::now() < end) {
        frame->idle();
        const std::string text = label->getText().getString();
        EXPECT_EQ(text.find_first_not_of(text.substr(0, 1)), std::string::npos) << text;
    }
    isOver = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    // What was set last is shown.
    std::thread([&] {
        knob->setValue(1.F);
        label->setText("last");
    }).join();
    EXPECT_TRUE(isDrawn(*frame, host, 320, 130, stripColor(29)));
    EXPECT_EQ(label->getText(), "last");
    EXPECT_TRUE(recorder.log.empty());
    frame->close();
}

TEST_F(Threads, AreShownWithTheNextIdle) {
    HostWindow host;
    CFrame* frame = openFrame(host);
    CAnimKnob* knob = addKnob(*frame);
    ASSERT_TRUE(isDrawn(*frame, host, 320, 130, stripColor(0)));
    for (int index = 1; index < 30; ++index) {
        std::thread([&] { knob->setValue(static_cast<float>(index) / 29.F + 0.001F); }).join();
        frame->idle();
        EXPECT_FALSE(knob->isDirty());
        EXPECT_TRUE(isDrawn(*frame, host, 320, 130, stripColor(index)));
    }
    frame->close();
}

} // namespace
} // namespace VSTGUI::test
