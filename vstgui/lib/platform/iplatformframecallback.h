// What a window asks of its frame.
#pragma once

#include "vstgui/lib/crect.h"
#include "vstgui/lib/vstguifwd.h"

#include <cstdint>

namespace VSTGUI {

// The kind of window that a frame is opened in.
enum class PlatformType : std::int32_t {
    kHWND = 0,
    kX11EmbedWindowID = 4,
    kDefaultNative = -1 // the platform's own kind
};

// Base of what a platform lets an application choose at opening.
class IPlatformFrameConfig {
public:
    virtual ~IPlatformFrameConfig() = default;
};

// User-interface thread.
class IPlatformFrameCallback {
public:
    // Draws the part of the frame that lies in `rect`, in the window's pixels.
    virtual void platformDrawRect(CDrawContext& context, const CRect& rect) = 0;
    // Hands on what the user did; places are the window's pixels. The window may be closed when the
    // call returns.
    virtual void platformOnEvent(Event& event) = 0;
    // Time to look at the clock and to draw; the frame need not be idled for it to come. The window
    // may be closed when the call returns.
    virtual void platformOnTurn() = 0;

protected:
    ~IPlatformFrameCallback() = default;
};

} // namespace VSTGUI
