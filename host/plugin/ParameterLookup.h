// Finds the parameter that a user means.
#pragma once

#include "host/plugin/HostedPlugin.h"

#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

// As the plug-in reports them, by index; whole for our own instrument.
std::vector<std::string> parameterNames(HostedPlugin& plugin);

// The index of the parameter that `wanted` means, by the rules of NameLookup. Plug-ins may cut
// names to the interface's eight characters; the whole name is found too. `names` are as the
// plug-in reports them. Throws InputError for what means several or none.
int findParameter(const std::vector<std::string>& names, std::string_view wanted);

} // namespace zelvatone
