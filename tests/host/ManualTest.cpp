// The manual and the completion keep up with the options that there are.

#include "support/Program.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>

namespace zelvatone {
namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

// The word of small letters behind the first `mark` in a line; empty without one.
std::string wordBehind(const std::string& line, const std::string& mark) {
    const std::size_t at = line.find(mark);
    if (at == std::string::npos) {
        return {};
    }
    const std::size_t start = at + mark.size();
    const std::size_t end = line.find_first_not_of("abcdefghijklmnopqrstuvwxyz", start);
    return line.substr(start, end - start);
}

std::set<std::string> longOptionsOf(const std::string& command) {
    std::set<std::string> names;
    for (const std::string& line : linesOf(zelvatoneWith({command, "--help"}).output)) {
        if (line.rfind("  -", 0) == 0) { // option lines; their texts stand further right
            names.insert(wordBehind(line, "--"));
        }
    }
    return names;
}

TEST(Manual, DescribesEveryOption) {
    std::set<std::string> described;
    for (const std::string& line : linesOf(readText(TEST_HOST_SOURCES "man/zelvatone.1"))) {
        if (line.rfind(".It Fl ", 0) == 0) {
            described.insert(wordBehind(line, "Fl -"));
        }
    }
    for (const char* command : {"render", "info", "params"}) {
        const auto options = longOptionsOf(command);
        EXPECT_GE(options.size(), 3U) << command;
        for (const std::string& option : options) {
            EXPECT_EQ(described.count(option), 1U) << option;
        }
    }
}

std::set<std::string> completionsOf(const std::string& command, const std::string& word) {
    const auto result =
        shellWith("source \"$1\"; COMP_WORDS=(zelvatone \"$2\" \"$3\"); COMP_CWORD=2; _zelvatone; "
                  "printf '%s\\n' \"${COMPREPLY[@]}\"",
                  {TEST_HOST_SOURCES "completion/zelvatone.bash", command, word});
    EXPECT_EQ(result.errors, "");
    const auto lines = linesOf(result.output);
    return {lines.begin(), lines.end()};
}

TEST(Completion, OffersEveryOptionOfACommand) {
    for (const char* command : {"render", "info", "params"}) {
        std::set<std::string> expected;
        for (const std::string& option : longOptionsOf(command)) {
            expected.insert("--" + option);
        }
        EXPECT_EQ(completionsOf(command, "--"), expected) << command;
    }
}

TEST(Completion, FinishesAWord) {
    EXPECT_EQ(completionsOf("render", "--ra"), std::set<std::string>{"--rate"});
}

} // namespace
} // namespace zelvatone
