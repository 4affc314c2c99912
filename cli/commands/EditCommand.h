// `zelvatone edit`: a plug-in's editor in a window.
#pragma once

#include "cli/commands/PluginOptions.h"
#include "cli/commands/SetupOptions.h"
#include "cli/terminal/StandardOutput.h"

#include <optional>
#include <string>

namespace zelvatone {

struct EditOptions {
    PluginOptions plugin;
    SetupOptions setup;
    std::optional<std::string> save; // the preset file to write at the end
};

CLI::App* addEditCommand(CLI::App& app, EditOptions& options);
// Returns when the user has closed the window.
void runEdit(const EditOptions& options, const StandardOutput& output);

} // namespace zelvatone
