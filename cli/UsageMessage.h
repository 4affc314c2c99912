// What is wrong with a command line, in the program's own words.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class ParseError;
} // namespace CLI

namespace zelvatone {

// The words of the command line after the program's name, with "help COMMAND" as the option --help
// of that command, and with its usual level after a --normalize that has none.
std::vector<std::string> commandWords(int argc, char** argv);

// One line for a command line that `app` has not understood, with where to read more.
std::string usageMessage(const CLI::App& app, const CLI::ParseError& error);

// Throws UsageError for a command that `app` does not have, also where --help stands beside it.
void checkWords(const CLI::App& app);
// The same, and when no command was given.
void checkCommand(const CLI::App& app);

// Throws UsageError for the name of a file or folder that is empty.
void checkPaths(const CLI::App& app);

} // namespace zelvatone
