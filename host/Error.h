// How a command fails: one line for the user, and the process's exit status.
#pragma once

#include <stdexcept>
#include <string>

namespace zelvatone {

// `what()` is the line that the user reads, without the program's name and without a line end.
class Error : public std::runtime_error {
public:
    Error(const std::string& line, int exitStatus)
        : std::runtime_error(line), exitStatus_(exitStatus) {}

    int exitStatus() const { return exitStatus_; }

private:
    int exitStatus_;
};

// An input is bad: a file, a plug-in, a disk.
class InputError : public Error {
public:
    explicit InputError(const std::string& line) : Error(line, 1) {}
};

// The command line is bad, whatever the files hold.
class UsageError : public Error {
public:
    explicit UsageError(const std::string& line) : Error(line, 2) {}
};

} // namespace zelvatone
