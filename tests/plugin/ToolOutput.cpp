#include "tests/plugin/ToolOutput.h"

#include <array>
#include <cstdio>
#include <memory>
#include <sstream>

std::string outputOf(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string output;
    std::array<char, 512> part{};
    while (std::fgets(part.data(), part.size(), pipe.get()) != nullptr) {
        output += part.data();
    }
    return output;
}

std::vector<std::string> lastWords(const std::string& lines, const std::string& mark) {
    std::vector<std::string> words;
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) {
        if (line.find(mark) != std::string::npos) {
            words.push_back(line.substr(line.find_last_of(' ') + 1));
        }
    }
    return words;
}
