// What an application may bring to a frame's opening on X11. Needs no X11 header.
#pragma once

#include "vstgui/lib/platform/iplatformframecallback.h"
#include "vstgui/lib/vstguibase.h"

#include <cstdint>

namespace VSTGUI::X11 {

struct IEventHandler {
    // There may be something to read; handles it without waiting.
    virtual void onEvent() = 0;

protected:
    ~IEventHandler() = default;
};

struct ITimerHandler {
    virtual void onTimer() = 0;

protected:
    ~ITimerHandler() = default;
};

// The application's event loop. All calls on the user-interface thread; handlers may register and
// unregister from within their own calls. Each returns whether it did what was asked.
class IRunLoop : public virtual IReference {
public:
    // Calls the handler whenever the file descriptor `fd` may be read.
    virtual bool registerEventHandler(int fd, IEventHandler* handler) = 0;
    virtual bool unregisterEventHandler(IEventHandler* handler) = 0;
    virtual bool registerTimer(std::uint64_t intervalMs, ITimerHandler* handler) = 0;
    virtual bool unregisterTimer(ITimerHandler* handler) = 0;

protected:
    ~IRunLoop() override = default;
};

struct FrameConfig final : IPlatformFrameConfig {
    // May be null: the frame's idle does all that is to do.
    SharedPointer<IRunLoop> runLoop;
};

} // namespace VSTGUI::X11
