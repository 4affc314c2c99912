#include "cli/commands/ProgramsCommand.h"

#include "host/plugin/Programs.h"
#include "host/text/Json.h"
#include "host/text/Table.h"

#include <CLI/CLI.hpp>

namespace zelvatone {

namespace {

std::string asTable(const std::vector<std::string>& names) {
    std::vector<std::vector<std::string>> lines{{"Number", "Name"}};
    for (std::size_t i = 0; i < names.size(); ++i) {
        lines.push_back({std::to_string(i), names[i]});
    }
    return tableText(lines, {true, false});
}

Json asJson(const std::vector<std::string>& names) {
    Json list = Json::array();
    for (std::size_t i = 0; i < names.size(); ++i) {
        list.push_back({{"number", i}, {"name", names[i]}});
    }
    return list;
}

} // namespace

CLI::App* addProgramsCommand(CLI::App& app, ProgramsOptions& options) {
    CLI::App* command = app.add_subcommand("programs", "List the programs of the plug-in");
    addPluginOptions(*command, options.plugin);
    command->add_flag("--json", options.json, "Write JSON, for programs to read");
    command->footer("Examples:\n"
                    "  zelvatone programs\n"
                    "  zelvatone render song.mid -o song.wav --program Miniarp");
    return command;
}

void runPrograms(const ProgramsOptions& options, const StandardOutput& output) {
    const PluginLibrary library = loadPlugin(options.plugin);
    HostedPlugin plugin(library, StreamFormat{});
    const auto names = programNames(plugin);
    output.print(options.json ? jsonText(asJson(names)) : asTable(names));
}

} // namespace zelvatone
