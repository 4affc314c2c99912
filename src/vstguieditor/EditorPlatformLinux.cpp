#include "vstguieditor/EditorPlatform.h"

#include "vstgui/lib/platform/platform_x11.h"
#include "vstgui/lib/vstguiinit.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <vector>

namespace zelvatone {

namespace {

namespace X11 = VSTGUI::X11;

// The event loop that a host of this interface does not have: turned by hand at every idle.
class RunLoop final : public X11::IRunLoop, public VSTGUI::NonAtomicReferenceCounted {
public:
    bool registerEventHandler(int /*fd*/, X11::IEventHandler* handler) override {
        eventHandlers_.push_back(handler);
        return true;
    }
    bool unregisterEventHandler(X11::IEventHandler* handler) override {
        return std::erase(eventHandlers_, handler) != 0;
    }
    bool registerTimer(std::uint64_t intervalMs, X11::ITimerHandler* handler) override {
        const std::chrono::milliseconds interval(intervalMs);
        timers_.push_back({handler, interval, Clock::now() + interval});
        return true;
    }
    bool unregisterTimer(X11::ITimerHandler* handler) override {
        return std::erase_if(timers_, [=](const Timer& t) { return t.handler == handler; }) != 0;
    }

    // Handlers may register and unregister while others are called: walks through copies, and skips
    // those that have left meanwhile.
    void turn() {
        for (X11::IEventHandler* handler : std::vector(eventHandlers_)) {
            if (std::ranges::find(eventHandlers_, handler) != eventHandlers_.end()) {
                handler->onEvent();
            }
        }
        const auto now = Clock::now();
        for (const Timer& timer : std::vector(timers_)) {
            fireIfDue(timer.handler, now);
        }
    }

private:
    using Clock = std::chrono::steady_clock;

    struct Timer {
        X11::ITimerHandler* handler;
        Clock::duration interval;
        Clock::time_point due;
    };

    // A host that idles seldom gets one call, not one for every interval that it missed.
    void fireIfDue(X11::ITimerHandler* handler, Clock::time_point now) {
        const auto timer = std::ranges::find(timers_, handler, &Timer::handler);
        if (timer == timers_.end() || timer->due > now) {
            return;
        }
        timer->due = now + timer->interval;
        handler->onTimer();
    }

    std::vector<X11::IEventHandler*> eventHandlers_;
    std::vector<Timer> timers_;
};

int users = 0;
// One for all frames of the library: a toolkit may listen to the first frame's loop only.
VSTGUI::SharedPointer<RunLoop> runLoop;

} // namespace

ToolkitUse::ToolkitUse() {
    if (users++ == 0) {
        VSTGUI::init(nullptr);
        runLoop = VSTGUI::makeOwned<RunLoop>();
    }
}

ToolkitUse::~ToolkitUse() {
    if (--users == 0) {
        runLoop = nullptr;
        VSTGUI::exit();
    }
}

bool openFrame(VSTGUI::CFrame& frame, void* parent) {
    X11::FrameConfig config;
    config.runLoop = runLoop.get();
    return frame.open(parent, VSTGUI::PlatformType::kX11EmbedWindowID, &config);
}

void runToolkitLoop() {
    // A handler may let go of the last use.
    if (const auto loop = runLoop) {
        loop->turn();
    }
}

} // namespace zelvatone
