// In place of DatasetCommand.cpp in a build without the datasets: that of Windows, which does
// without the libraries that write archives and FLAC, and any with ZELVATONE_BUILD_DATASET off.
#include "cli/commands/DatasetCommand.h"

#include "host/Error.h"

#include <CLI/CLI.hpp>

namespace zelvatone {

CLI::App* addDatasetCommand(CLI::App& app, DatasetOptions& /*options*/) {
    CLI::App* command = app.add_subcommand("dataset", "Not in this build");
    command->allow_extras(); // whatever follows, the message is the same
    return command;
}

void runDataset(const DatasetOptions& /*options*/, const StandardOutput& /*output*/) {
    throw UsageError("this build has no 'dataset': make it with the Linux host");
}

} // namespace zelvatone
