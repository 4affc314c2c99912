#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

// The last word of each line that a program prints.
std::vector<std::string> lastWordsOf(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string output;
    std::array<char, 512> part{};
    while (std::fgets(part.data(), part.size(), pipe.get()) != nullptr) {
        output += part.data();
    }
    std::vector<std::string> words;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        words.push_back(line.substr(line.find_last_of(' ') + 1));
    }
    return words;
}

TEST(ClapFile, ExportsItsEntryAndNothingElse) {
    EXPECT_THAT(lastWordsOf(ZELVATONE_NM " --dynamic --defined-only " ZELVATONE_CLAP),
                testing::ElementsAre("clap_entry"));
}

} // namespace
