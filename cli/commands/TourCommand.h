// `zelvatone tour`: a page to hear and to see every program.
#pragma once

#include "cli/commands/PluginOptions.h"
#include "cli/terminal/StandardOutput.h"

#include <string>

namespace zelvatone {

struct TourOptions {
    PluginOptions plugin;
    // One of the two; the other is empty.
    std::string folder;           // to be opened there
    std::string site;             // to be put on a web server
    std::string keys;             // the address of a page to play the programs on, or empty
    std::string threads = "auto"; // as typed
    bool quiet = false;
};

CLI::App* addTourCommand(CLI::App& app, TourOptions& options);
void runTour(const TourOptions& options, const StandardOutput& output);

} // namespace zelvatone
