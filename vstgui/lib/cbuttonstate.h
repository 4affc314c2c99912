// Which mouse buttons and modifier keys an event came with.
#pragma once

#include "vstgui/lib/vstguibase.h"

#include <cstdint>

namespace VSTGUI {

enum CButton : std::int32_t {
    kLButton = 0x2,
    kMButton = 0x4,
    kRButton = 0x8,
    kShift = 0x10,
    kControl = 0x20,
    kAlt = 0x40
};

// On a press and on a release the button is the one that went down or up.
class CButtonState {
public:
    constexpr CButtonState(std::int32_t flags = 0) : flags(flags) {} // NOLINT(*-explicit-*)

    constexpr std::int32_t getButtonState() const { return flags & kButtons; }
    constexpr std::int32_t getModifierState() const { return flags & kModifiers; }
    // Left and no other button, whatever the modifier keys.
    constexpr bool isLeftButton() const { return getButtonState() == kLButton; }
    constexpr bool isShiftSet() const { return (flags & kShift) != 0; }
    constexpr bool isControlSet() const { return (flags & kControl) != 0; }
    constexpr bool isAltSet() const { return (flags & kAlt) != 0; }
    constexpr std::int32_t operator()() const { return flags; }
    constexpr std::int32_t operator&(std::int32_t mask) const { return flags & mask; }

private:
    static constexpr std::int32_t kButtons = kLButton | kMButton | kRButton;
    static constexpr std::int32_t kModifiers = kShift | kControl | kAlt;

    std::int32_t flags;
};

} // namespace VSTGUI
