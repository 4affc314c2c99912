// What the bundle's description and its binaries must agree on.
#pragma once

#include "formats/ParameterUnits.h"

#include <cstdint>

namespace zelvatone::lv2 {

// Sessions keep these names for ever: a changed one is another plug-in.
inline constexpr const char* kPluginUri = "https://quillfeather.example/zelvatone/lv2";
inline constexpr const char* kEditorUri = "https://quillfeather.example/zelvatone/lv2#editor";
// Before the number of a factory program, in the order of the bank: two programs may have one name.
inline constexpr const char* kPresetUri = "https://quillfeather.example/zelvatone/lv2#preset-";
// The property under which a session keeps the exact values.
inline constexpr const char* kStateUri = "https://quillfeather.example/zelvatone/lv2#state";

// By port index. The parameters that are shown follow in the order of their own indices.
enum Port : std::uint32_t {
    kEventPort,
    kLeftPort,
    kRightPort,
    kEnabledPort,
    kFirstParameterPort,
    kPortCount = kFirstParameterPort + kShownParameters
};

constexpr std::uint32_t portOf(std::int32_t parameter) {
    return kFirstParameterPort + static_cast<std::uint32_t>(parameter);
}

} // namespace zelvatone::lv2
