// The list of a plug-in's parameters, for people and for programs to read.
#pragma once

#include "host/plugin/ParameterRows.h"
#include "host/text/Json.h"

#include <string>
#include <vector>

namespace zelvatone {

// Under a heading; with line ends.
std::string parameterTable(const std::vector<ParameterRow>& rows);
Json parameterJson(const std::vector<ParameterRow>& rows);

} // namespace zelvatone
