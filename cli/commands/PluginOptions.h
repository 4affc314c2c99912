// The options of every command that opens a plug-in.
#pragma once

#include "host/plugin/PluginLibrary.h"

#include <string>

namespace CLI {
class App;
}

namespace zelvatone {

struct PluginOptions {
    std::string path; // empty: look for it
    bool verbose = false;
};

void addPluginOptions(CLI::App& command, PluginOptions& options);

// Loads the plug-in that the options mean. Throws InputError.
PluginLibrary loadPlugin(const PluginOptions& options);

} // namespace zelvatone
