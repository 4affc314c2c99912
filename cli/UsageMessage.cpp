#include "cli/UsageMessage.h"

#include "host/Error.h"
#include "host/text/Format.h"
#include "host/text/Names.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <utility>

namespace zelvatone {

namespace {

using Words = std::vector<std::string>;

// The command that the words led to, and inside it the command of a command.
const CLI::App& parsedCommand(const CLI::App& app) {
    const CLI::App* command = &app;
    while (!command->get_subcommands().empty()) {
        command = command->get_subcommands()[0];
    }
    return *command;
}

// "preset save", as it was typed.
std::string commandName(const CLI::App& app) {
    std::string names;
    for (const CLI::App* command = &app; !command->get_subcommands().empty();) {
        command = command->get_subcommands()[0];
        names += (names.empty() ? "" : " ") + command->get_name();
    }
    return names;
}

Words commandsOf(const CLI::App& app) {
    Words names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(command->get_name());
    }
    return names;
}

Words optionsOf(const CLI::App& command) {
    Words names;
    for (const CLI::Option* option : command.get_options()) {
        names.insert(names.end(), option->get_lnames().begin(), option->get_lnames().end());
    }
    return names;
}

// `word` with two neighbouring letters exchanged, in every way.
Words exchanges(std::string word) {
    Words words;
    for (std::size_t i = 1; i < word.size(); ++i) {
        std::swap(word[i - 1], word[i]);
        words.push_back(word);
        std::swap(word[i - 1], word[i]);
    }
    return words;
}

// The name that two exchanged letters hide, the nearest one, or one that is near with two letters
// exchanged; empty without any.
std::string nearestName(const Words& names, const std::string& wanted) {
    const Words exchanged = exchanges(wanted);
    const auto hidden =
        std::find_first_of(names.begin(), names.end(), exchanged.begin(), exchanged.end());
    if (hidden != names.end()) {
        return *hidden;
    }
    Words nearest = nearestNames(names, wanted, 1);
    for (std::size_t i = 0; nearest.empty() && i < exchanged.size(); ++i) {
        nearest = nearestNames(names, exchanged[i], 1);
    }
    return nearest.empty() ? "" : nearest[0];
}

bool isOption(const std::string& word) {
    return word.size() > 1 && word[0] == '-';
}

// "--rate" of "--rate=5".
std::string unknownOption(const CLI::App& command, const std::string& word) {
    const std::string name = word.substr(0, word.find('='));
    const std::string nearest = nearestName(
        optionsOf(command), name.substr(std::min(name.find_first_not_of('-'), name.size())));
    return nearest.empty() ? formatText("unknown option '{}'", name)
                           : formatText("unknown option '{}'; did you mean '--{}'?", name, nearest);
}

std::string unknownCommand(const CLI::App& app, const std::string& word) {
    const Words names = commandsOf(app);
    const std::string nearest = nearestName(names, word);
    return nearest.empty() ? formatText("unknown command '{}'; the commands are {}", word,
                                        wordList(names, "and"))
                           : formatText("unknown command '{}'; did you mean '{}'?", word, nearest);
}

// What the words hold that no option and no argument takes; empty for none.
std::string unexpectedWord(const CLI::App& command) {
    const Words rest = command.remaining();
    const auto option = std::find_if(rest.begin(), rest.end(), isOption);
    if (option != rest.end()) {
        return unknownOption(command, *option);
    }
    if (rest.empty()) {
        return {};
    }
    return commandsOf(command).empty() ? formatText("'{}' is one argument too many", rest[0])
                                       : unknownCommand(command, rest[0]);
}

bool needsCommand(const CLI::App& command) {
    return command.get_require_subcommand_min() > 0 && command.get_subcommands().empty();
}

// The library's "--rate: At Most 1 required but received 2", "--set: 1 required NAME=VALUE
// missing".
std::string wrongCount(const std::string& text) {
    const std::string option = text.substr(0, text.find(':'));
    return text.find("At Most") != std::string::npos ? option + " is given twice"
                                                     : option + " needs a value";
}

std::string messageFor(const CLI::App& command, const CLI::ParseError& error) {
    std::string unexpected = unexpectedWord(command);
    if (!unexpected.empty()) {
        return unexpected;
    }
    if (needsCommand(command)) {
        return formatText("'{}' needs a command: {}", command.get_name(),
                          wordList(commandsOf(command), "or"));
    }
    return error.get_name() == "ArgumentMismatch" ? wrongCount(error.what()) : error.what();
}

// Empty for an option that names none.
std::string_view kindOfPath(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    if (type.starts_with("FOLDER")) {
        return "folder";
    }
    return type.starts_with("FILE") || type.starts_with("SONG") ? "file" : "";
}

// Whether a word is meant for a level, also for one that cannot be: "-6dB", "-130", "-1,5".
bool looksLikeLevel(std::string_view word) {
    constexpr std::size_t kUnit = 2; // letters of "dB"
    if (word.size() > kUnit && equalInAnyCase(word.substr(word.size() - kUnit), "dB")) {
        word.remove_suffix(kUnit);
    }
    return word.find_first_of("0123456789") != std::string_view::npos &&
           word.find_first_not_of("+-.,0123456789 ") == std::string_view::npos;
}

// What follows the option may be the song: the library would take that for the level.
void completeNormalize(Words& words) {
    constexpr const char* kUsualLevel = "-1"; // room for the filters of players and of lossy files
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "--normalize" && (i + 1 == words.size() || !looksLikeLevel(words[i + 1]))) {
            words.insert(words.begin() + static_cast<std::ptrdiff_t>(i) + 1, kUsualLevel);
        }
    }
}

} // namespace

Words commandWords(int argc, char** argv) {
    Words words(argv + std::min(argc, 1), argv + argc);
    if (!words.empty() && words[0] == "help") {
        words.erase(words.begin());
        words.emplace_back("--help");
    }
    completeNormalize(words);
    return words;
}

std::string usageMessage(const CLI::App& app, const CLI::ParseError& error) {
    const std::string name = commandName(app);
    return formatText("{}; see 'zelvatone {}{}--help'", messageFor(parsedCommand(app), error), name,
                      name.empty() ? "" : " ");
}

void checkWords(const CLI::App& app) {
    const std::string unexpected = app.get_subcommands().empty() ? unexpectedWord(app) : "";
    if (!unexpected.empty()) {
        throw UsageError(unexpected);
    }
}

void checkCommand(const CLI::App& app) {
    checkWords(app);
    if (app.get_subcommands().empty()) {
        throw UsageError(
            formatText("no command given; the commands are {}", wordList(commandsOf(app), "and")));
    }
}

void checkPaths(const CLI::App& app) {
    for (const CLI::Option* option : parsedCommand(app).get_options()) {
        const std::string_view kind = kindOfPath(*option);
        const auto& values = option->results();
        if (!kind.empty() && std::find(values.begin(), values.end(), "") != values.end()) {
            throw UsageError(formatText("{} needs the name of a {}, not an empty text",
                                        option->get_name(), kind));
        }
    }
}

} // namespace zelvatone
