// Who wants to hear of a control.
#pragma once

#include "vstgui/lib/cbuttonstate.h"
#include "vstgui/lib/vstguifwd.h"

#include <cstdint>

namespace VSTGUI {

// User-interface thread.
class IControlListener {
public:
    // The user gave the control a new value.
    virtual void valueChanged(CControl* control) = 0;
    // A press with a modifier key; a result other than 0 swallows it.
    virtual std::int32_t controlModifierClicked(CControl* /*control*/, CButtonState /*buttons*/) {
        return 0;
    }
    // Around all the changes of one gesture of the user's.
    virtual void controlBeginEdit(CControl* /*control*/) {}
    virtual void controlEndEdit(CControl* /*control*/) {}

protected:
    virtual ~IControlListener() = default;
};

} // namespace VSTGUI
