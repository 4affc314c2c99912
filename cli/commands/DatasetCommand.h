// `zelvatone dataset`: many sounds with their parameters, for machines to learn from.
#pragma once

#include "cli/commands/PluginOptions.h"
#include "cli/terminal/StandardOutput.h"

#include <optional>
#include <string>
#include <vector>

namespace zelvatone {

// As typed.
struct DatasetOptions {
    PluginOptions plugin; // of which `verbose` alone is offered: the instrument is built in
    std::string folder;
    std::optional<std::string> count;
    std::string seed = "0";
    std::string programs = "all";
    std::string notes = "36-84";
    std::string velocities = "100";
    std::vector<std::string> ranges;
    std::optional<std::string> table; // a file
    std::string seconds = "1";
    std::optional<std::string> hold;
    std::string tempo = "120";
    std::string rate = "44100";
    std::string audio = "wav";
    std::optional<std::string> perShard;
    std::string share = "1/1";
    bool verifies = false;
    std::string sample = "100";
    std::string threads = "auto";
    bool quiet = false;
};

CLI::App* addDatasetCommand(CLI::App& app, DatasetOptions& options);
void runDataset(const DatasetOptions& options, const StandardOutput& output);

} // namespace zelvatone
