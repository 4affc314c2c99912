#include "host/preset/PresetTransfer.h"

#include "host/Error.h"
#include "host/plugin/PluginText.h"
#include "host/plugin/Programs.h"
#include "host/preset/ReportedValue.h"
#include "host/text/Format.h"

#include <cstring>

namespace zelvatone {

namespace {

PresetProgram takeCurrent(HostedPlugin& plugin) {
    PluginTextBuffer name{};
    plugin.request(effGetProgramName, 0, 0, name.data());
    PresetProgram program{{name.data(), strnlen(name.data(), name.size())}, {}};
    for (int i = 0; i < plugin.parameterCount(); ++i) {
        program.values.push_back(plugin.parameter(i));
    }
    return program;
}

Preset emptyPreset(const HostedPlugin& plugin, bool isBank) {
    Preset preset;
    preset.isBank = isBank;
    preset.pluginId = plugin.record().uniqueID;
    preset.pluginVersion = plugin.record().version;
    return preset;
}

void applyToCurrent(HostedPlugin& plugin, const PresetProgram& program) {
    PluginTextBuffer name{}; // the interface knows no const
    program.name.copy(name.data(), name.size() - 1);
    plugin.request(effSetProgramName, 0, 0, name.data());
    for (std::size_t i = 0; i < program.values.size(); ++i) {
        setAsReported(plugin, static_cast<int>(i), program.values[i]);
    }
}

// As files and plug-in lists show it.
std::uint32_t shownId(VstInt32 id) {
    return static_cast<std::uint32_t>(id);
}

void checkCount(std::string_view what, std::size_t there, int expected) {
    if (there != static_cast<std::size_t>(expected)) {
        throw InputError(formatText("has {} {}, the plug-in {}", there, what, expected));
    }
}

} // namespace

Preset takeProgram(HostedPlugin& plugin) {
    Preset preset = emptyPreset(plugin, false);
    preset.programs.push_back(takeCurrent(plugin));
    return preset;
}

Preset takeBank(HostedPlugin& plugin) {
    Preset preset = emptyPreset(plugin, true);
    preset.currentProgram = currentProgram(plugin);
    for (int i = 0; i < plugin.programCount(); ++i) {
        selectProgram(plugin, i);
        preset.programs.push_back(takeCurrent(plugin));
    }
    selectProgram(plugin, preset.currentProgram);
    return preset;
}

void checkPreset(const Preset& preset, const HostedPlugin& plugin) {
    if (preset.pluginId != plugin.record().uniqueID) {
        throw InputError(formatText("is for the plug-in with the id {}, not for this one with {}",
                                    shownId(preset.pluginId), shownId(plugin.record().uniqueID)));
    }
    if (preset.isBank) {
        checkCount("programs", preset.programs.size(), plugin.programCount());
    }
    for (const PresetProgram& program : preset.programs) {
        checkCount("parameters", program.values.size(), plugin.parameterCount());
    }
}

void applyPreset(HostedPlugin& plugin, const Preset& preset) {
    if (!preset.isBank) {
        applyToCurrent(plugin, preset.programs.at(0));
        return;
    }
    for (std::size_t i = 0; i < preset.programs.size(); ++i) {
        selectProgram(plugin, static_cast<int>(i));
        applyToCurrent(plugin, preset.programs[i]);
    }
    selectProgram(plugin, preset.currentProgram);
}

void setAsReported(HostedPlugin& plugin, int index, float value) {
    setAsReported(value, [&plugin, index](float number) {
        plugin.setParameter(index, number);
        return plugin.parameter(index);
    });
}

} // namespace zelvatone
