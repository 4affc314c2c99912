// The manual and the completion keep up with the options that there are.

#include "support/Program.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace zelvatone {
namespace {

std::set<std::string> longOptionsOf(const std::string& command) {
    const std::string help = zelvatoneWith({command, "--help"}).output;
    // Option lines start with two spaces and the option itself.
    const std::regex option("\n  (?:-[a-z],)?--([a-z]+)");
    std::set<std::string> names;
    for (std::sregex_iterator it(help.begin(), help.end(), option), end; it != end; ++it) {
        names.insert((*it)[1]);
    }
    return names;
}

TEST(Manual, DescribesEveryOption) {
    const std::string manual = readText(TEST_HOST_SOURCES "man/zelvatone.1");
    for (const char* command : {"render", "info", "params"}) {
        const auto options = longOptionsOf(command);
        EXPECT_GE(options.size(), 3U) << command;
        for (const std::string& option : options) {
            EXPECT_TRUE(std::regex_search(manual, std::regex("\\.It Fl .*-" + option + "\\b")))
                << option;
        }
    }
}

std::set<std::string> completionsOf(const std::string& command, const std::string& word) {
    const auto result =
        shellWith("source \"$1\"; COMP_WORDS=(zelvatone \"$2\" \"$3\"); COMP_CWORD=2; _zelvatone; "
                  "printf '%s\\n' \"${COMPREPLY[@]}\"",
                  {TEST_HOST_SOURCES "completion/zelvatone.bash", command, word});
    EXPECT_EQ(result.errors, "");
    std::set<std::string> words;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);) {
        words.insert(line);
    }
    return words;
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
