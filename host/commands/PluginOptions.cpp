#include "commands/PluginOptions.h"

#include "Error.h"
#include "plugin/ParameterLookup.h"
#include "plugin/PluginSearch.h"
#include "text/Numbers.h"

#include <CLI/CLI.hpp>

namespace zelvatone {

namespace {

std::vector<std::string> parameterNames(HostedPlugin& plugin) {
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(plugin.parameterCount()));
    for (int i = 0; i < plugin.parameterCount(); ++i) {
        names.push_back(plugin.text(effGetParamName, i));
    }
    return names;
}

} // namespace

void addPluginOptions(CLI::App& command, PluginOptions& options) {
    command.add_option("--plugin", options.path,
                       "The plug-in to load (default: zelvatone.so, looked for beside this "
                       "program, in $VST_PATH, ~/.vst and the system's plug-in folders)");
    command.add_flag("--verbose", options.verbose,
                     "Show on standard error what the plug-in prints");
}

void addParameterOption(CLI::App& command, PluginOptions& options) {
    command
        .add_option("--set", options.settings,
                    "Set a parameter, by name or number, to a value from 0 to 1; may be repeated")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
}

PluginLibrary loadPlugin(const PluginOptions& options) {
    return PluginLibrary(options.path.empty() ? findPlugin(pluginFolders(currentSurroundings()))
                                              : std::filesystem::path(options.path));
}

ParameterSetting parseSetting(std::string_view text) {
    const std::size_t equals = text.rfind('=');
    if (equals == std::string_view::npos || equals == 0) {
        throw UsageError("--set takes NAME=VALUE, not '" + std::string(text) + "'");
    }
    const auto value = realNumber(text.substr(equals + 1));
    if (!value || *value < 0.0 || *value > 1.0) {
        throw UsageError("--set takes values from 0 to 1, not '" +
                         std::string(text.substr(equals + 1)) + "'");
    }
    return {std::string(text.substr(0, equals)), static_cast<float>(*value)};
}

std::vector<ParameterSetting> parseSettings(const std::vector<std::string>& texts) {
    std::vector<ParameterSetting> settings;
    settings.reserve(texts.size());
    for (const std::string& text : texts) {
        settings.push_back(parseSetting(text));
    }
    return settings;
}

void applySettings(HostedPlugin& plugin, const std::vector<ParameterSetting>& settings) {
    if (settings.empty()) {
        return;
    }
    const auto names = parameterNames(plugin);
    std::vector<std::pair<int, float>> found;
    found.reserve(settings.size());
    for (const ParameterSetting& setting : settings) {
        found.emplace_back(findParameter(names, setting.parameter), setting.value);
    }
    for (const auto& [index, value] : found) {
        plugin.setParameter(index, value);
    }
}

} // namespace zelvatone
