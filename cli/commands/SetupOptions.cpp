#include "cli/commands/SetupOptions.h"

#include "cli/commands/OptionValues.h"
#include "host/Error.h"
#include "host/files/UserPath.h"
#include "host/plugin/FullNames.h"
#include "host/plugin/ParameterLookup.h"
#include "host/plugin/PluginText.h"
#include "host/plugin/Programs.h"
#include "host/plugin/ShownValue.h"
#include "host/preset/PresetReader.h"
#include "host/preset/PresetTransfer.h"
#include "host/text/Format.h"
#include "host/text/Numbers.h"

#include <CLI/CLI.hpp>

#include <utility>

namespace zelvatone {

namespace {

void checkPresetFile(const PresetFile& file, const HostedPlugin& plugin) {
    try {
        checkPreset(file.preset, plugin);
    } catch (const InputError& error) {
        throw InputError(formatText("{} {}", file.path, error.what()));
    }
}

std::vector<std::string> namesIn(const Preset& bank) {
    std::vector<std::string> names;
    names.reserve(bank.programs.size());
    for (const PresetProgram& program : bank.programs) {
        names.push_back(cleanText(program.name));
    }
    return names;
}

// What `find` finds of a word of the command line. A number that is out of range is wrong there,
// whatever the plug-in.
template<typename Find>
int findTyped(Find find, const std::vector<std::string>& names, const std::string& wanted) {
    try {
        return find(names, wanted);
    } catch (const InputError& error) {
        if (wholeNumber(wanted)) {
            throw UsageError(error.what());
        }
        throw;
    }
}

// The number of the program that is wanted, before the bank that holds it is applied.
std::optional<int> wantedProgram(HostedPlugin& plugin, const PluginSetup& setup) {
    if (!setup.program) {
        return std::nullopt;
    }
    return findTyped(findProgram,
                     setup.preset ? namesIn(setup.preset->preset) : programNames(plugin),
                     *setup.program);
}

std::vector<int> wantedParameters(HostedPlugin& plugin,
                                  const std::vector<ParameterSetting>& settings) {
    std::vector<int> found;
    if (!settings.empty()) {
        const auto names = parameterNames(plugin);
        for (const ParameterSetting& setting : settings) {
            found.push_back(findTyped(findParameter, names, setting.parameter));
        }
    }
    return found;
}

// What a parameter shows may depend on the program that is chosen.
void applySetting(HostedPlugin& plugin, int index, const ParameterSetting& setting) {
    std::optional<float> value = setting.value;
    if (!setting.shown.empty()) {
        value = valueShownAs(plugin, index, setting.shown);
    }
    if (!value) {
        throw UsageError(
            formatText("--set takes values from 0 to 1 or as {} shows them, {}, not '{}'",
                       parameterName(plugin, index), shownLimits(plugin, index), setting.shown));
    }
    plugin.setParameter(index, *value);
}

} // namespace

void addSetupOptions(CLI::App& command, SetupOptions& options) {
    command
        .add_option("--preset", options.preset,
                    "Load a preset first: a program (.fxp) or a bank (.fxb)")
        ->type_name("FILE");
    command
        .add_option("--program", options.program,
                    "Choose a program by name, by the beginning of one name, or by number")
        ->type_name("NAME");
    command
        .add_option("--set", options.settings,
                    "Set a parameter, chosen like a program, to a value from 0 to 1 or as "
                    "'zelvatone params' "
                    "shows it (Wave=Saw, \"Attack=0.5 s\"); may be repeated")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
}

ParameterSetting parseSetting(std::string_view text) {
    const std::size_t equals = text.rfind('=');
    if (equals == std::string_view::npos || equals == 0) {
        throw UsageError(formatText("--set takes NAME=VALUE, not '{}'", text));
    }
    const std::string_view shown = text.substr(equals + 1);
    const auto value = realNumber(shown);
    const std::string hint = decimalPointHint(shown);
    if (shown.empty() || !hint.empty()) {
        throw UsageError(formatText("--set takes values from 0 to 1, not '{}'{}", shown, hint));
    }
    const std::string parameter(text.substr(0, equals));
    return value && *value >= 0.0 && *value <= 1.0
               ? ParameterSetting{parameter, static_cast<float>(*value), {}}
               : ParameterSetting{parameter, 0.0F, std::string(shown)};
}

PresetFile readPresetFile(const std::string& path) {
    return {path, readPreset(userPath(path))};
}

PluginSetup readSetup(const SetupOptions& options) {
    PluginSetup setup;
    for (const std::string& text : options.settings) {
        setup.settings.push_back(parseSetting(text));
    }
    setup.program = options.program;
    if (options.preset) {
        setup.preset = readPresetFile(*options.preset);
        if (setup.program && !setup.preset->preset.isBank) {
            throw InputError(
                formatText("{} holds one program, so there is none to choose with --program",
                           *options.preset));
        }
    }
    return setup;
}

void applySettings(HostedPlugin& plugin, const std::vector<ParameterSetting>& settings) {
    const auto parameters = wantedParameters(plugin, settings);
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        applySetting(plugin, parameters[i], settings[i]);
    }
}

void applySetup(HostedPlugin& plugin, const PluginSetup& setup) {
    if (setup.preset) {
        checkPresetFile(*setup.preset, plugin);
    }
    const auto program = wantedProgram(plugin, setup);
    wantedParameters(plugin, setup.settings); // throws before anything is set
    if (setup.preset) {
        applyPreset(plugin, setup.preset->preset);
    }
    if (program) {
        selectProgram(plugin, *program);
    }
    applySettings(plugin, setup.settings);
}

} // namespace zelvatone
