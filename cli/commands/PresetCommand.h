// `zelvatone preset`: keeps an instrument's programs in files; the plug-in itself stores nothing.
#pragma once

#include "cli/commands/PluginOptions.h"
#include "cli/commands/SetupOptions.h"
#include "cli/terminal/StandardOutput.h"
#include "host/plugin/HostedPlugin.h"

#include <optional>
#include <string>

namespace zelvatone {

struct PresetOptions {
    PluginOptions plugin;
    SetupOptions setup;
    std::string file;
    std::optional<std::string> name; // for the program that is saved
    bool json = false;
    bool loads = false; // load, not save
};

CLI::App* addPresetCommand(CLI::App& app, PresetOptions& options);
void runPreset(const PresetOptions& options, const StandardOutput& output);

// Throws UsageError when the file's name says neither program nor bank.
void checkPresetPath(const std::string& path);
// Writes what the plug-in's current program, or its bank, is set to, as the file's name says, and
// prints what that was. Throws InputError when the file cannot be written.
void savePreset(const std::string& path, HostedPlugin& plugin, const StandardOutput& output);

} // namespace zelvatone
