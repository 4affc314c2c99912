// A plug-in's parameters as they stand, for people and for programs to read.
#pragma once

#include "host/plugin/HostedPlugin.h"
#include "host/text/Json.h"

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

// Of the current program.
std::vector<ParameterRow> readParameters(HostedPlugin& plugin);

// Under a heading; with line ends.
std::string parameterTable(const std::vector<ParameterRow>& rows);
Json parameterJson(const std::vector<ParameterRow>& rows);

} // namespace zelvatone
