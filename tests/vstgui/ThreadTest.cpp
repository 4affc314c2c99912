// Values set by other threads while the frame is drawn. What is worth here is the run under the
// thread sanitizer; without it, the order of what is shown.
#include "tests/vstgui/Fixtures.h"

#include <initializer_list>
#include <thread>
#include <utility>

namespace VSTGUI::test {
namespace {

class Threads : public WindowTest {};

TEST_F(Threads, MaySetValuesWhileTheFrameIsDrawn) {
    constexpr int kThreads = 3;
    HostWindow host;
    CFrame* frame = openFrame(host);
    CAnimKnob* knob = addKnob(*frame);

    std::atomic<bool> isOver = false;
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&] {
            for (int count = 0; !isOver; ++count) {
                knob->setValue(static_cast<float>(count % 30) / 29.F);
                if (count % 1000 == 0) {
                    std::this_thread::yield();
                }
            }
        });
    }
    const auto end = Recorder::Clock::now() + std::chrono::seconds(3);
    while (Recorder::Clock::now() < end) {
        frame->idle();
    }
    isOver = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    // What was set last is shown.
    std::thread([&] { knob->setValue(1.F); }).join();
    EXPECT_TRUE(isDrawn(*frame, host, 320, 130, stripColor(29)));
    EXPECT_TRUE(recorder.log.empty());
    frame->close();
}

// Sets a value while it is drawn, once, as another thread may at that moment.
class SettingView final : public CView {
public:
    SettingView(const CRect& size, CControl& control, float value)
        : CView(size), control_(control), value_(value) {}

    void draw(CDrawContext*) override {
        if (std::exchange(isArmed, false)) {
            control_.setValue(value_);
        }
    }

    bool isArmed = false;

private:
    ~SettingView() override = default;

    CControl& control_;
    float value_;
};

TEST_F(Threads, MayChangeAValueAndBackWhileItIsDrawn) {
    HostWindow host;
    CFrame* frame = openFrame(host);
    CAnimKnob* knob = addKnob(*frame);
    frame->removeView(knob, false);
    auto* before = new SettingView(kKnobSize, *knob, 0.5F);
    auto* after = new SettingView(kKnobSize, *knob, 1.F);
    for (CView* view : std::initializer_list<CView*>{before, knob, after}) {
        frame->addView(view);
    }
    ASSERT_TRUE(isDrawn(*frame, host, 320, 130, stripColor(0)));
    before->isArmed = after->isArmed = true;
    knob->setValue(1.F);
    EXPECT_TRUE(idleUntil(*frame, [&] { return !after->isArmed; }));
    EXPECT_TRUE(isDrawn(*frame, host, 320, 130, stripColor(29)));
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
