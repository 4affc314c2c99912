// `zelvatone info`: what a plug-in says about itself.
#pragma once

#include "cli/commands/PluginOptions.h"
#include "cli/terminal/StandardOutput.h"

namespace zelvatone {

struct InfoOptions {
    PluginOptions plugin;
    bool json = false;
};

CLI::App* addInfoCommand(CLI::App& app, InfoOptions& options);
void runInfo(const InfoOptions& options, const StandardOutput& output);

} // namespace zelvatone
