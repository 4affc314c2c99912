// In place of PlayCommand.cpp in a build without live play: that of Windows, and any with
// ZELVATONE_BUILD_PLAY off.
#include "cli/commands/PlayCommand.h"

#include "host/Error.h"

#include <CLI/CLI.hpp>

namespace zelvatone {

CLI::App* addPlayCommand(CLI::App& app, PlayOptions& /*options*/) {
    CLI::App* command = app.add_subcommand("play", "Not in this build");
    command->allow_extras(); // whatever follows, the message is the same
    return command;
}

void runPlay(const PlayOptions& /*options*/, const StandardOutput& /*output*/) {
    throw UsageError("this build has no 'play': it is there on Linux");
}

} // namespace zelvatone
