// `zelvatone screenshot`: a picture of a plug-in's editor.
#pragma once

#include "cli/commands/PluginOptions.h"
#include "cli/commands/SetupOptions.h"
#include "cli/terminal/StandardOutput.h"

#include <optional>
#include <string>

namespace zelvatone {

struct ScreenshotOptions {
    PluginOptions plugin;
    SetupOptions setup;
    std::string output;                  // the PNG file
    std::optional<std::string> helpPage; // 0 for the help's index, 1 to 5 for its pages; as typed
};

CLI::App* addScreenshotCommand(CLI::App& app, ScreenshotOptions& options);
void runScreenshot(const ScreenshotOptions& options, const StandardOutput& output);

} // namespace zelvatone
