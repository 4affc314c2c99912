// `zelvatone render`: plays a MIDI file through a plug-in into a sound file.
#pragma once

#include "cli/commands/PluginOptions.h"
#include "cli/commands/SetupOptions.h"
#include "cli/terminal/StandardOutput.h"

#include <optional>
#include <string>
#include <vector>

namespace zelvatone {

struct RenderOptions {
    PluginOptions plugin;
    SetupOptions setup;
    std::string song;
    std::string output;
    bool isSplit = false; // as without any of these three
    bool isTogether = false;
    bool isRaw = false;
    std::optional<std::string> programs; // a file of program changes
    std::vector<std::string> channels;   // "CHANNEL=PROGRAM@LEVELdB" or "CHANNEL=off"
    std::optional<std::string> stems;    // a folder
    std::optional<std::string> automate; // a file of moves
    // As typed; read by renderSettings().
    std::string rate = "44100";
    std::string block = "512";
    std::string format = "24";
    std::string gain = "0";
    std::optional<std::string> normalize;
    bool isMono = false;
    bool blocksDc = false;
    std::string tail = "auto";
    std::string threads = "auto";
    bool force = false;
    bool quiet = false;
};

CLI::App* addRenderCommand(CLI::App& app, RenderOptions& options);
void runRender(const RenderOptions& options, const StandardOutput& output);

} // namespace zelvatone
