// A plug-in's parameters as they stand.
#pragma once

#include "host/plugin/HostedPlugin.h"

#include <string>
#include <vector>

namespace zelvatone {

struct ParameterRow {
    int index;
    std::string name;
    std::string label;
    float value; // normalised
    std::string display;
};

// Of the current program, by index.
std::vector<ParameterRow> readParameters(HostedPlugin& plugin);

} // namespace zelvatone
