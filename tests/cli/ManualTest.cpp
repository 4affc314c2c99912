// The manual and the completion know every option.

#include "tests/support/Program.h"

#include <gmock/gmock.h>
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

// The word of small letters and hyphens after the first `mark` in a line; empty without one.
std::string wordBehind(const std::string& line, const std::string& mark) {
    const std::size_t at = line.find(mark);
    if (at == std::string::npos) {
        return {};
    }
    const std::size_t start = at + mark.size();
    const std::size_t end = line.find_first_not_of("abcdefghijklmnopqrstuvwxyz-", start);
    return line.substr(start, end - start);
}

using Words = std::vector<std::string>;

// Every command, and the commands inside one.
const std::vector<Words> kCommands{{"render"},  {"play"}, {"song"},           {"tour"},
                                   {"dataset"}, {"edit"}, {"screenshot"},     {"programs"},
                                   {"params"},  {"info"}, {"preset", "save"}, {"preset", "load"}};

Words joined(Words words, const std::string& last) {
    words.push_back(last);
    return words;
}

std::set<std::string> longOptionsOf(const Words& command) {
    std::set<std::string> names;
    for (const std::string& line : linesOf(zelvatoneWith(joined(command, "--help")).output)) {
        if (line.rfind("  -", 0) == 0) { // option lines; their texts stand further right
            names.insert(wordBehind(line, "--"));
        }
    }
    return names;
}

TEST(Manual, DescribesEveryOption) {
    std::set<std::string> described;
    for (const std::string& line : linesOf(readText(TEST_CLI_SOURCES "man/zelvatone.1"))) {
        if (line.rfind(".It Fl ", 0) == 0) {
            described.insert(wordBehind(line, "Fl -"));
        }
    }
    for (const Words& command : kCommands) {
        const auto options = longOptionsOf(command);
        EXPECT_GE(options.size(), 2U) << command.back();
        for (const std::string& option : options) {
            EXPECT_EQ(described.count(option), 1U) << option;
        }
    }
}

// What is offered for the last of the words behind "zelvatone".
std::set<std::string> completionsOf(const Words& words) {
    Words arguments{TEST_CLI_SOURCES "completion/zelvatone.bash"};
    arguments.insert(arguments.end(), words.begin(), words.end());
    const auto result =
        shellWith("source \"$1\"; COMP_WORDS=(\"$0\" \"${@:2}\"); COMP_CWORD=$(($# - 1)); "
                  "_zelvatone; printf '%s\\n' \"${COMPREPLY[@]}\"",
                  arguments);
    EXPECT_EQ(result.errors, "");
    const auto lines = linesOf(result.output);
    return {lines.begin(), lines.end()};
}

using ::testing::Contains;
using ::testing::ElementsAre;

TEST(Completion, OffersEveryOptionOfACommand) {
    for (const Words& command : kCommands) {
        std::set<std::string> expected;
        for (const std::string& option : longOptionsOf(command)) {
            expected.insert("--" + option);
        }
        EXPECT_EQ(completionsOf(joined(command, "--")), expected) << command.back();
    }
}

TEST(Completion, OffersEveryCommand) {
    const auto offered = completionsOf({""});
    for (const Words& command : kCommands) {
        EXPECT_THAT(offered, Contains(command[0]));
    }
    EXPECT_THAT(completionsOf({"preset", ""}), ElementsAre("load", "save"));
}

TEST(Completion, FinishesAWord) {
    EXPECT_THAT(completionsOf({"render", "--rat"}), ElementsAre("--rate"));
}

TEST(Completion, FinishesTheNameOfAProgramAsTheShellNeedsIt) {
    EXPECT_THAT(completionsOf({"render", "--program", "so"}),
                ElementsAre("So\\ Sad", "Son\\ of\\ Digital\\ Pad"));
    EXPECT_THAT(completionsOf({"preset", "save", "--program", "Lime\\ "}),
                ElementsAre("Lime\\ Bass"));
    EXPECT_THAT(completionsOf({"render", "--channel", "2", "=", "lime"}),
                ElementsAre("Lime\\ Bass"));
}

TEST(Completion, FinishesTheNameOfAParameterUpToItsValue) {
    EXPECT_THAT(completionsOf({"render", "--set", "att"}), ElementsAre("Attack="));
}

TEST(Completion, OffersHelpForEveryCommand) {
    EXPECT_THAT(completionsOf({"help", "pre"}), ElementsAre("preset"));
}

} // namespace
} // namespace zelvatone
