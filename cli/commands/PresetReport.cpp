#include "cli/commands/PresetReport.h"

#include "host/plugin/PluginText.h"
#include "host/plugin/Programs.h"
#include "host/text/Format.h"
#include "host/text/Numbers.h"
#include "host/text/Table.h"

namespace zelvatone {

namespace {

std::string parametersText(std::size_t count) {
    return formatText("{} {}", count, count == 1 ? "parameter" : "parameters");
}

} // namespace

std::string presetSummary(const Preset& preset) {
    const std::size_t count = preset.programs.empty() ? 0 : preset.programs[0].values.size();
    if (preset.isBank) {
        return formatText("bank of {} programs, {} each", preset.programs.size(),
                          parametersText(count));
    }
    return formatText("program '{}', {}", cleanText(preset.programs[0].name),
                      parametersText(count));
}

PresetReport::PresetReport(const PresetFile& file, bool oneProgram, HostedPlugin& plugin)
    : file_(file), isList_(file.preset.isBank && !oneProgram) {
    const int current = currentProgram(plugin);
    if (!isList_) {
        programs_.push_back(loaded(current, plugin));
        return;
    }
    for (int i = 0; i < plugin.programCount(); ++i) {
        selectProgram(plugin, i);
        programs_.push_back(loaded(i, plugin));
    }
}

PresetReport::Loaded PresetReport::loaded(int number, HostedPlugin& plugin) const {
    const auto index = static_cast<std::size_t>(file_.preset.isBank ? number : 0);
    return {number, plugin.text(effGetProgramName), file_.preset.programs[index].values,
            readParameters(plugin)};
}

std::string PresetReport::programTable(const Loaded& program) {
    std::vector<std::vector<std::string>> lines{
        {"Index", "Name", "Label", "Stored", "Value", "Display"}};
    for (std::size_t i = 0; i < program.rows.size(); ++i) {
        const ParameterRow& row = program.rows[i];
        lines.push_back({std::to_string(row.index), row.name, row.label,
                         shortestText(program.stored[i]), shortestText(row.value), row.display});
    }
    return tableText(lines, {true, false, false, true, true, false});
}

std::string PresetReport::bankTable() const {
    std::vector<std::vector<std::string>> lines{{"Number", "Name", ""}};
    for (const Loaded& program : programs_) {
        const bool isCurrent = program.number == file_.preset.currentProgram;
        lines.push_back({std::to_string(program.number), program.name, isCurrent ? "current" : ""});
    }
    return tableText(lines, {true, false, false});
}

std::string PresetReport::text() const {
    const std::string head =
        formatText("{}: {}\n", cleanText(file_.path), presetSummary(file_.preset));
    if (isList_) {
        return head + bankTable();
    }
    const Loaded& program = programs_[0];
    const std::string which =
        file_.preset.isBank ? formatText("Program {} '{}'\n", program.number, program.name) : "";
    return head + which + programTable(program);
}

Json PresetReport::programJson(const Loaded& program) {
    Json parameters = parameterJson(program.rows);
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        parameters[i]["stored"] = shortestDouble(program.stored[i]);
    }
    return {{"number", program.number}, {"name", program.name}, {"parameters", parameters}};
}

std::string PresetReport::json() const {
    Json programs = Json::array();
    for (const Loaded& program : programs_) {
        programs.push_back(programJson(program));
    }
    const Preset& preset = file_.preset;
    return jsonText({{"path", file_.path},
                     {"kind", preset.isBank ? "bank" : "program"},
                     {"pluginId", preset.pluginId},
                     {"pluginVersion", preset.pluginVersion},
                     {"currentProgram", preset.currentProgram},
                     {"programs", programs}});
}

} // namespace zelvatone
