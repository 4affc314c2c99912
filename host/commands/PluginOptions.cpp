#include "commands/PluginOptions.h"

#include "plugin/PluginSearch.h"

#include <CLI/CLI.hpp>

namespace zelvatone {

void addPluginOptions(CLI::App& command, PluginOptions& options) {
    command.add_option("--plugin", options.path,
                       "The plug-in to load (default: zelvatone.so, looked for beside this "
                       "program, in $VST_PATH, ~/.vst and the system's plug-in folders)");
    command.add_flag("--verbose", options.verbose,
                     "Show on standard error what the plug-in prints");
}

PluginLibrary loadPlugin(const PluginOptions& options) {
    return PluginLibrary(options.path.empty() ? findPlugin(pluginFolders(currentSurroundings()))
                                              : std::filesystem::path(options.path));
}

} // namespace zelvatone
