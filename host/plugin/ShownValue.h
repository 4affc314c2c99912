// Values of parameters as the plug-in shows them: "Saw", "0.50 s", "1/4 beats".
#pragma once

#include "host/plugin/HostedPlugin.h"

#include <optional>
#include <string>
#include <string_view>

namespace zelvatone {

// The normalised value at which a parameter, by index, shows `wanted`: the middle of all such
// values. Case and spaces do not count, and equal numbers are equal texts, as "0.5s" and "0.50 s".
// None when it never shows that. Asks the plug-in for the texts of many values, and leaves the one
// that it had.
std::optional<float> valueShownAs(HostedPlugin& plugin, int index, std::string_view wanted);

// "'0.01 s' to '2.00 s'": what a parameter shows at its ends. Leaves its value.
std::string shownLimits(HostedPlugin& plugin, int index);

} // namespace zelvatone
