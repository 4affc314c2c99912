#include "host/plugin/FullNames.h"

#include "host/text/Names.h"

#include <array>
#include <string_view>

namespace zelvatone {

namespace {

constexpr std::array<std::string_view, 23> kNames{
    "Mode Shift", "Shift Interval", "Min Modes", "Max Modes",  "Falloff",   "Parity",
    "Jitter",     "Freq Drop",      "Chop",      "Modes",      "Detune",    "Power",
    "Drop Mod",   "Wave",           "Crush",     "Blend Time", "Exit Peel", "Mode Init",
    "Attack",     "Decay",          "Sustain",   "Release",    "Reserved"};

} // namespace

bool isOurInstrument(HostedPlugin& plugin) {
    return plugin.text(effGetEffectName) == "Zelvatone";
}

std::string parameterName(HostedPlugin& plugin, int index) {
    std::string name = plugin.text(effGetParamName, index);
    if (index < 0 || index >= static_cast<int>(kNames.size()) || !isOurInstrument(plugin)) {
        return name;
    }
    // A later version may have others.
    const std::string_view whole = kNames[static_cast<std::size_t>(index)];
    return cleanEnd(whole.substr(0, kVstMaxParamStrLen)) == name ? std::string(whole) : name;
}

} // namespace zelvatone
