// `zelvatone programs`: the programs that a plug-in carries.
#pragma once

#include "cli/commands/PluginOptions.h"
#include "cli/terminal/StandardOutput.h"

namespace zelvatone {

struct ProgramsOptions {
    PluginOptions plugin;
    bool json = false;
};

CLI::App* addProgramsCommand(CLI::App& app, ProgramsOptions& options);
void runPrograms(const ProgramsOptions& options, const StandardOutput& output);

} // namespace zelvatone
