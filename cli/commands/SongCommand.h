// `zelvatone song`: what a MIDI file holds, and what of it an instrument does not play.
#pragma once

#include "cli/commands/PluginOptions.h"
#include "cli/terminal/StandardOutput.h"

#include <string>

namespace zelvatone {

struct SongOptions {
    PluginOptions plugin; // none is loaded
    std::string song;
    bool json = false;
};

CLI::App* addSongCommand(CLI::App& app, SongOptions& options);
void runSong(const SongOptions& options, const StandardOutput& output);

} // namespace zelvatone
