#include "commands/ParamsCommand.h"

#include "text/Json.h"
#include "text/Numbers.h"
#include "text/Table.h"

#include <CLI/CLI.hpp>

namespace zelvatone {

namespace {

struct ParameterRow {
    int index;
    std::string name;
    std::string label;
    float value; // normalised
    std::string display;
};

std::vector<ParameterRow> readParameters(HostedPlugin& plugin) {
    std::vector<ParameterRow> rows;
    rows.reserve(static_cast<std::size_t>(plugin.parameterCount()));
    for (int i = 0; i < plugin.parameterCount(); ++i) {
        rows.push_back({i, plugin.text(effGetParamName, i), plugin.text(effGetParamLabel, i),
                        plugin.parameter(i), plugin.text(effGetParamDisplay, i)});
    }
    return rows;
}

std::string asTable(const std::vector<ParameterRow>& rows) {
    std::vector<std::vector<std::string>> lines{{"Index", "Name", "Label", "Value", "Display"}};
    for (const ParameterRow& row : rows) {
        lines.push_back({std::to_string(row.index), row.name, row.label,
                         fixedPoint(static_cast<double>(row.value), 4), row.display});
    }
    return tableText(lines, {true, false, false, true, false});
}

Json asJson(const std::vector<ParameterRow>& rows) {
    Json list = Json::array();
    for (const ParameterRow& row : rows) {
        list.push_back({{"index", row.index},
                        {"name", row.name},
                        {"label", row.label},
                        {"value", shortestDouble(row.value)},
                        {"display", row.display}});
    }
    return list;
}

} // namespace

CLI::App* addParamsCommand(CLI::App& app, ParamsOptions& options) {
    CLI::App* command = app.add_subcommand("params", "List the parameters and their values");
    addPluginOptions(*command, options.plugin);
    addParameterOption(*command, options.plugin);
    command->add_flag("--json", options.json, "Write JSON, for programs to read");
    command->footer("Examples:\n"
                    "  zelvatone params\n"
                    "  zelvatone params --set \"Shift Interval=0.5\" --set 18=0.25 --json");
    return command;
}

void runParams(const ParamsOptions& options, const StandardOutput& output) {
    const auto settings = parseSettings(options.plugin.settings);
    const PluginLibrary library = loadPlugin(options.plugin);
    HostedPlugin plugin(library, StreamFormat{});
    applySettings(plugin, settings);
    const auto rows = readParameters(plugin);
    output.print(options.json ? jsonText(asJson(rows)) : asTable(rows));
}

} // namespace zelvatone
