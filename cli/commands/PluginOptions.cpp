#include "cli/commands/PluginOptions.h"

#include "host/files/UserPath.h"
#include "host/plugin/PluginSearch.h"
#include "host/text/Format.h"

#include <CLI/CLI.hpp>

namespace zelvatone {

void addPluginOptions(CLI::App& command, PluginOptions& options) {
    command
        .add_option("--plugin", options.path,
                    formatText("The plug-in to load (default: {} beside this program, in VST_PATH "
                               "or in the system's plug-in folders)",
                               pluginFile()))
        ->type_name("FILE");
    command.add_flag("--verbose", options.verbose,
                     "Show on standard error what the plug-in prints");
}

PluginLibrary loadPlugin(const PluginOptions& options) {
    return PluginLibrary(options.path.empty() ? findPlugin(pluginFolders(currentSurroundings()))
                                              : userPath(options.path));
}

} // namespace zelvatone
