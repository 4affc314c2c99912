// What an instrument is set to before it plays: a preset, a program, single parameters.
#pragma once

#include "host/plugin/HostedPlugin.h"
#include "host/preset/Preset.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace zelvatone {

// As typed.
struct SetupOptions {
    std::optional<std::string> preset;  // a file
    std::optional<std::string> program; // name, beginning of one, or number
    std::vector<std::string> settings;  // "NAME=VALUE", in the order of the command line
};

// --preset, --program and --set.
void addSetupOptions(CLI::App& command, SetupOptions& options);

struct ParameterSetting {
    std::string parameter; // name or number
    float value = 0.0F;    // normalised
    std::string shown;     // the value as the plug-in shows it, in place of a normalised one
};

// Reads "NAME=VALUE": a number from 0 to 1 is the normalised value. Throws UsageError when it is
// not of that form.
ParameterSetting parseSetting(std::string_view text);

struct PresetFile {
    std::string path;
    Preset preset;
};

// Reads a preset file. Throws InputError with its name for a bad file.
PresetFile readPresetFile(const std::string& path);

// In the order in which they are applied.
struct PluginSetup {
    std::optional<PresetFile> preset;
    std::optional<std::string> program;
    std::vector<ParameterSetting> settings;
};

// Reads the options and the preset file that they name. Throws UsageError for a bad setting,
// InputError for a bad file or one that leaves no program to choose.
PluginSetup readSetup(const SetupOptions& options);

// Throws, with nothing set, InputError for a preset that is not for this plug-in and for a program
// or parameter that it does not have, and UsageError for the number of one that is out of range.
// Throws UsageError for a value that a parameter does not show, with preset and program set.
void applySetup(HostedPlugin& plugin, const PluginSetup& setup);

// Throws as applySetup() does, with nothing set for a parameter that the plug-in does not have.
void applySettings(HostedPlugin& plugin, const std::vector<ParameterSetting>& settings);

} // namespace zelvatone
