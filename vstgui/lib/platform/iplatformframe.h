// The window that a frame is shown in.
#pragma once

#include "vstgui/lib/crect.h"

namespace VSTGUI {

// User-interface thread.
class IPlatformFrame : public NonAtomicReferenceCounted {
public:
    // Destroys the window; the callback hears of nothing afterwards. The object stays alive until
    // the last of those who were inside it has returned.
    virtual void close() = 0;
    // Asks for `rect` to be drawn again, in the window's pixels.
    virtual void invalidRect(const CRect& rect) = 0;
    // Handles every event that has come in so far; never waits.
    virtual void handleEvents() = 0;
    // Draws what was asked for.
    virtual void drawInvalid() = 0;

protected:
    ~IPlatformFrame() override = default;
};

} // namespace VSTGUI
