// The whole names of our own instrument's parameters, of which the interface hands out eight
// letters.
#pragma once

#include "host/plugin/HostedPlugin.h"

#include <string>

namespace zelvatone {

// Whether the plug-in is the instrument that this host belongs to.
bool isOurInstrument(HostedPlugin& plugin);

// What the plug-in reports as a parameter's name; whole for our own instrument.
std::string parameterName(HostedPlugin& plugin, int index);

} // namespace zelvatone
