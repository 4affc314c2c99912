// The frame in a host's window, under a real server and a real pointer.
#include "tests/vstgui/Fixtures.h"

#include "vstgui/lib/platform/platform_x11.h"

#include <thread>

namespace VSTGUI::test {
namespace {

class Window : public WindowTest {};

TEST_F(Window, LiesInTheHostsWindowAndAsksToBeShown) {
    HostWindow host;
    CFrame* frame = openFrame(host);
    ASSERT_EQ(host.children().size(), 1U);
    const xcb_window_t child = host.children().front();
    EXPECT_TRUE(host.isViewable(child));
    const std::vector<std::uint32_t> info = host.embedInfo(child);
    ASSERT_EQ(info.size(), 2U);
    EXPECT_EQ(info[1] & 1U, 1U); // mapped
    EXPECT_TRUE(isDrawn(*frame, host, 0, 0, kRedCColor));
    EXPECT_TRUE(isDrawn(*frame, host, 716, 476, kRedCColor));
    EXPECT_FALSE(frame->open(host.handle()));
    frame->close();
    EXPECT_TRUE(host.children().empty());
}

TEST_F(Window, IsShownByAHostThatWaitsForTheProperty) {
    HostWindow host(Host::kEmbedsStrictly);
    CFrame* frame = openFrame(host);
    ASSERT_EQ(host.children().size(), 1U);
    EXPECT_FALSE(host.isViewable(host.children().front()));
    host.embedChildren();
    EXPECT_TRUE(isDrawn(*frame, host, 300, 300, kRedCColor));
    frame->close();
}

TEST_F(Window, DoesNotOpenInAWindowThatIsGone) {
    HostWindow host;
    host.destroy();
    auto* frame = new CFrame(kFrameSize, &recorder);
    EXPECT_FALSE(frame->open(host.handle()));
    frame->idle();
    frame->close();
}

TEST_F(Window, SurvivesThatTheHostDestroysItsOwnFirst) {
    HostWindow host;
    CFrame* frame = openFrame(host);
    CAnimKnob* knob = addKnob(*frame);
    ASSERT_TRUE(isDrawn(*frame, host, 0, 0, kRedCColor));
    host.destroy();
    for (int idle = 0; idle < 20; ++idle) {
        knob->setValue(static_cast<float>(idle) / 20.F);
        frame->idle();
    }
    frame->close();
}

TEST_F(Window, EndsADragWhenTheHostDestroysItsWindow) {
    HostWindow host;
    CFrame* frame = openFrame(host);
    addKnob(*frame);
    host.movePointer(320, 110);
    host.press();
    ASSERT_TRUE(idleUntil(*frame, [&] { return recorder.count("begin 7") == 1; }));
    host.destroy();
    EXPECT_TRUE(idleUntil(*frame, [&] { return recorder.count("end 7") == 1; }));
    host.release();
    frame->close();
    EXPECT_EQ(recorder.count("end 7"), 1);
}

TEST_F(Window, EndsADragWhenItIsClosed) {
    HostWindow host;
    CFrame* frame = openFrame(host);
    addKnob(*frame);
    host.movePointer(320, 110);
    host.press();
    host.movePointer(340, 130);
    ASSERT_TRUE(idleUntil(*frame, [&] { return recorder.count("value") == 1; }));
    frame->close();
    EXPECT_EQ(recorder.count("end 7"), 1);
    EXPECT_EQ(recorder.count("value"), 1);
    host.release();
}

TEST_F(Window, DrawsAgainWhatTheHostHidAndShowed) {
    HostWindow host;
    CFrame* frame = openFrame(host);
    ASSERT_TRUE(isDrawn(*frame, host, 5, 5, kRedCColor));
    host.hide();
    frame->setBackgroundColor(kBlackCColor);
    frame->idle();
    host.show();
    EXPECT_TRUE(isDrawn(*frame, host, 5, 5, kBlackCColor));
    frame->close();
}

TEST_F(Window, SurvivesAStormOfExposures) {
    HostWindow host;
    CFrame* frame = openFrame(host);
    CAnimKnob* knob = addKnob(*frame);
    ASSERT_TRUE(isDrawn(*frame, host, 5, 5, kRedCColor));
    for (int wave = 0; wave < 10; ++wave) {
        host.sendExpose(host.children().front(), 2000);
        knob->setValue(static_cast<float>(wave % 2));
        frame->idle();
    }
    EXPECT_TRUE(isDrawn(*frame, host, 320, 130, stripColor(29)));
    frame->close();
}

TEST_F(Window, LeavesTheKeyboardToTheHost) {
    HostWindow host;
    CFrame* frame = openFrame(host);
    addKnob(*frame);
    frame->addView(new CKickButton(CRect(550, 0, 575, 30), &recorder, 3, nullptr));
    host.takeFocus();
    host.click(320, 110);
    host.click(560, 10);
    ASSERT_TRUE(idleUntil(*frame, [&] { return recorder.count("end 3") == 1; }));
    EXPECT_TRUE(host.hasFocus());
    // With the pointer over the frame.
    host.keysHeard();
    host.typeKey();
    frame->idle();
    EXPECT_EQ(host.keysHeard(), 1);
    frame->close();
}

TEST_F(Window, StandsBesideOthersOfTheSameProcess) {
    constexpr std::size_t kFrames = 10;
    std::vector<std::unique_ptr<HostWindow>> hosts;
    std::vector<CFrame*> frames;
    std::vector<CAnimKnob*> knobs;
    for (std::size_t index = 0; index < kFrames; ++index) {
        hosts.push_back(std::make_unique<HostWindow>());
        frames.push_back(openFrame(*hosts.back()));
        knobs.push_back(addKnob(*frames.back()));
    }
    // The windows lie one upon the other: the last one is seen, then, as they close, the next.
    for (std::size_t index = kFrames; index-- > 0;) {
        knobs[index]->setValue(static_cast<float>(index + 1) / 29.F + 0.001F);
        for (CFrame* other : frames) {
            other->idle();
        }
        EXPECT_TRUE(isDrawn(*frames[index], *hosts[index], 320, 130,
                            stripColor(static_cast<int>(index) + 1)));
        EXPECT_EQ(hosts[index]->children().size(), 1U);
        frames[index]->close();
        frames.pop_back();
        EXPECT_TRUE(hosts[index]->children().empty());
        hosts[index]->destroy();
    }
}

TEST_F(Window, MayBeClosedByItsOwnHandler) {
    // Closes the frame at the first change, as a host may do when it is told of automation.
    struct ClosingListener final : IControlListener {
        void valueChanged(CControl* control) override {
            isClosed = true;
            control->getFrame()->close();
        }
        bool isClosed = false;
    } listener;
    HostWindow host;
    CFrame* frame = openFrame(host);
    addKnob(*frame)->setListener(&listener);
    host.movePointer(320, 110);
    host.press();
    host.movePointer(340, 130);
    host.movePointer(320, 110);
    host.release();
    // One idle meets all of the drag, and loses the frame in the middle of it. Under the address
    // sanitizer this shows any later use of the frame.
    EXPECT_TRUE(idleUntil(*frame, [&] { return listener.isClosed; }));
    EXPECT_TRUE(host.children().empty());
}

// Registers what it is given and calls it when it is told to.
class RunLoop final : public X11::IRunLoop, public NonAtomicReferenceCounted {
public:
    bool registerEventHandler(int fd, X11::IEventHandler* newHandler) override {
        handler = newHandler;
        return fd >= 0;
    }
    bool unregisterEventHandler(X11::IEventHandler* oldHandler) override {
        return std::exchange(handler, nullptr) == oldHandler;
    }
    bool registerTimer(std::uint64_t, X11::ITimerHandler* newTimer) override {
        timer = newTimer;
        return true;
    }
    bool unregisterTimer(X11::ITimerHandler* oldTimer) override {
        return std::exchange(timer, nullptr) == oldTimer;
    }

    X11::IEventHandler* handler = nullptr;
    X11::ITimerHandler* timer = nullptr;

protected:
    ~RunLoop() override = default;
};

TEST_F(Window, IsServedByTheApplicationsLoopWhileItIsOpen) {
    HostWindow host;
    auto loop = makeOwned<RunLoop>();
    X11::FrameConfig config;
    config.runLoop = loop;
    auto* frame = new CFrame(kFrameSize, &recorder);
    CAnimKnob* knob = addKnob(*frame);
    ASSERT_TRUE(frame->open(host.handle(), PlatformType::kX11EmbedWindowID, &config));
    config.runLoop = nullptr;
    ASSERT_NE(loop->handler, nullptr);
    host.click(320, 110);
    for (int pump = 0; pump < 1000 && recorder.count("end 7") == 0; ++pump) {
        loop->handler->onEvent();
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    EXPECT_EQ(recorder.count("end 7"), 1);
    // Drawn too, without an idle of its own. Picture 14, see stripColor.
    knob->setValue(0.5F);
    constexpr Pixel kHalf = 14 * 8 << 16 | (255 - 14 * 8) << 8 | 40;
    for (int pump = 0; pump < 1000 && host.pixel(320, 130) != kHalf; ++pump) {
        loop->handler->onEvent();
        loop->timer->onTimer();
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    EXPECT_EQ(host.pixel(320, 130), kHalf);
    frame->close();
    EXPECT_EQ(loop->handler, nullptr);
    EXPECT_EQ(loop->timer, nullptr);
    EXPECT_EQ(loop->getNbReference(), 1);
}

} // namespace
} // namespace VSTGUI::test
