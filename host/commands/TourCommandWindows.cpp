// The tour's pictures are drawn by libraries that the Windows build does without.
#include "Error.h"
#include "commands/TourCommand.h"

#include <CLI/CLI.hpp>

namespace zelvatone {

CLI::App* addTourCommand(CLI::App& app, TourOptions& /*options*/) {
    CLI::App* command = app.add_subcommand("tour", "Not on Windows");
    command->allow_extras(); // whatever follows gets the one answer
    return command;
}

void runTour(const TourOptions& /*options*/, const StandardOutput& /*output*/) {
    throw UsageError("'tour' is not there on Windows: make the page with the Linux host");
}

} // namespace zelvatone
