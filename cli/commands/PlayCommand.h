// `zelvatone play`: an instrument for keyboards and loudspeakers.
#pragma once

#include "cli/commands/PluginOptions.h"
#include "cli/commands/SetupOptions.h"
#include "cli/terminal/StandardOutput.h"

#include <optional>
#include <string>
#include <vector>

namespace zelvatone {

struct PlayOptions {
    PluginOptions plugin;
    SetupOptions setup;
    std::optional<std::string> song;
    std::optional<std::string> output; // device
    std::vector<std::string> inputs;   // devices
    std::optional<std::string> rate;
    std::optional<std::string> buffer;
    std::vector<std::string> controllers; // "NUMBER=PARAMETER"
    std::optional<std::string> record;
    std::optional<std::string> keys; // the layout of the keyboard
    bool editor = false;
    bool list = false;
};

CLI::App* addPlayCommand(CLI::App& app, PlayOptions& options);
// Returns when the user has ended it.
void runPlay(const PlayOptions& options, const StandardOutput& output);

} // namespace zelvatone
