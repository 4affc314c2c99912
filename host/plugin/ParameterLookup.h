// Finds the parameter that a user means.
#pragma once

#include "host/plugin/HostedPlugin.h"

#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

// As the plug-in reports them, by index.
std::vector<std::string> parameterNames(HostedPlugin& plugin);

// The index of the parameter called `wanted`, in any case, or of that number. Plug-ins may cut
// names to the interface's eight characters, so a longer name is also found by its beginning.
// `names` are as the plug-in reports them. Throws InputError for a name that none or several have.
int findParameter(const std::vector<std::string>& names, std::string_view wanted);

} // namespace zelvatone
