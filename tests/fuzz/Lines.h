// The lines of a text, as an input that holds several texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zelvatone::test {

// Without their ends; at least one, which may be empty.
inline std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines(1);
    for (const char c : text) {
        if (c == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += c;
        }
    }
    return lines;
}

} // namespace zelvatone::test
