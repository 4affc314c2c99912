// What every command that opens a plug-in is told about it.
#pragma once

#include "plugin/HostedPlugin.h"
#include "plugin/PluginLibrary.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace CLI {
class App;
}

namespace zelvatone {

struct PluginOptions {
    std::string path; // empty: look for it
    bool verbose = false;
    std::vector<std::string> settings; // "NAME=VALUE", in the order of the command line
};

void addPluginOptions(CLI::App& command, PluginOptions& options);
void addParameterOption(CLI::App& command, PluginOptions& options);

// Loads the plug-in that the options mean. Throws InputError.
PluginLibrary loadPlugin(const PluginOptions& options);

struct ParameterSetting {
    std::string parameter; // name or number
    float value;           // normalised
};

// Reads "NAME=VALUE". Throws UsageError when it is not of that form or the value is not 0 to 1.
ParameterSetting parseSetting(std::string_view text);
std::vector<ParameterSetting> parseSettings(const std::vector<std::string>& texts);

// Applies settings in order. Throws InputError, before any is applied, for a parameter that the
// plug-in does not have.
void applySettings(HostedPlugin& plugin, const std::vector<ParameterSetting>& settings);

} // namespace zelvatone
