// `zelvatone render`: plays a MIDI file through a plug-in into a sound file.
#pragma once

#include "commands/PluginOptions.h"
#include "terminal/StandardOutput.h"

#include <string>

namespace zelvatone {

struct RenderOptions {
    PluginOptions plugin;
    std::string song;
    std::string output;
    // As typed; read by renderSettings().
    std::string rate = "44100";
    std::string block = "512";
    std::string format = "24";
    std::string gain = "0";
    std::string tail = "auto";
    bool quiet = false;
};

CLI::App* addRenderCommand(CLI::App& app, RenderOptions& options);
void runRender(const RenderOptions& options, const StandardOutput& output);

} // namespace zelvatone
