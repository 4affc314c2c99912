#include "cli/commands/ParamsCommand.h"

#include "cli/commands/ParameterList.h"

#include <CLI/CLI.hpp>

namespace zelvatone {

CLI::App* addParamsCommand(CLI::App& app, ParamsOptions& options) {
    CLI::App* command = app.add_subcommand("params", "List the parameters and their values");
    addPluginOptions(*command, options.plugin);
    addSetupOptions(*command, options.setup);
    command->add_flag("--json", options.json, "Write JSON, for programs to read");
    command->footer("Examples:\n"
                    "  zelvatone params\n"
                    "  zelvatone params --program Organ\n"
                    "  zelvatone params --set \"Shift Interval=0.5\" --set 18=0.25 --json");
    return command;
}

void runParams(const ParamsOptions& options, const StandardOutput& output) {
    const PluginSetup setup = readSetup(options.setup);
    const PluginLibrary library = loadPlugin(options.plugin);
    HostedPlugin plugin(library, StreamFormat{});
    applySetup(plugin, setup);
    const auto rows = readParameters(plugin);
    output.print(options.json ? jsonText(parameterJson(rows)) : parameterTable(rows));
}

} // namespace zelvatone
