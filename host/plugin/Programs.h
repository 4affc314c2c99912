// A plug-in's programs: their names, and which one is current.
#pragma once

#include "host/plugin/HostedPlugin.h"

#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

// By number, from 0. The current program is the same afterwards.
std::vector<std::string> programNames(HostedPlugin& plugin);

int currentProgram(HostedPlugin& plugin);
// `number` from 0 to programCount() - 1.
void selectProgram(HostedPlugin& plugin, int number);

// The number of the program that `wanted` means, by the rules of NameLookup. Throws InputError for
// what means several or none.
int findProgram(const std::vector<std::string>& names, std::string_view wanted);

} // namespace zelvatone
