// In place of TourCommand.cpp in a build without the tour: that of Windows, which does without the
// libraries that draw its pictures, and any with ZELVATONE_BUILD_TOUR off.
#include "cli/commands/TourCommand.h"

#include "host/Error.h"

#include <CLI/CLI.hpp>

namespace zelvatone {

CLI::App* addTourCommand(CLI::App& app, TourOptions& /*options*/) {
    CLI::App* command = app.add_subcommand("tour", "Not in this build");
    command->allow_extras(); // whatever follows, the message is the same
    return command;
}

void runTour(const TourOptions& /*options*/, const StandardOutput& /*output*/) {
    throw UsageError("this build has no 'tour': make the page with the Linux host");
}

} // namespace zelvatone
