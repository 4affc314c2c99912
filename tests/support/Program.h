// Runs the built program as a user does.
#pragma once

#include "tests/support/TemporaryFolder.h"

#include <sys/types.h>

#include <string>
#include <vector>

namespace zelvatone {

struct ProgramResult {
    int exitStatus = -1; // -1 when a signal ended it
    int signal = 0;
    std::string output; // standard output
    std::string errors; // standard error
};

// A started program. Its standard output and error go to files in `folder`.
class Program {
public:
    Program(const std::vector<std::string>& command, const TemporaryFolder& folder);
    pid_t id() const { return id_; }
    // Ends a program that hangs.
    ProgramResult wait();

private:
    int waitForEnd() const;

    std::filesystem::path output_;
    std::filesystem::path errors_;
    pid_t id_ = -1;
};

// Runs `zelvatone` with these arguments to its end.
ProgramResult zelvatoneWith(const std::vector<std::string>& arguments);
// Runs a shell's line to its end; "$0" in it is the path of `zelvatone`, "$1" and so on the rest.
ProgramResult shellWith(const std::string& line, const std::vector<std::string>& arguments);

// The path of a test plug-in.
std::string testPlugin(const std::string& name);

} // namespace zelvatone
