// `zelvatone params`: a plug-in's parameters and their values.
#pragma once

#include "cli/commands/PluginOptions.h"
#include "cli/commands/SetupOptions.h"
#include "cli/terminal/StandardOutput.h"

namespace zelvatone {

struct ParamsOptions {
    PluginOptions plugin;
    SetupOptions setup;
    bool json = false;
};

CLI::App* addParamsCommand(CLI::App& app, ParamsOptions& options);
void runParams(const ParamsOptions& options, const StandardOutput& output);

} // namespace zelvatone
