// A host's text buffer, filled with a mark that shows how far a plug-in writes.
#pragma once

#include <array>
#include <cstddef>
#include <string>

class GuardedText {
public:
    GuardedText() {
        buffer.fill(kMark);
        buffer.back() = '\0'; // text() ends, even if the plug-in writes no terminator
    }

    char* data() { return buffer.data(); }
    // What was written, up to the first terminator.
    std::string text() const { return {buffer.data()}; }
    // How many characters were written, from the start to the last one that differs from the mark.
    // A plug-in that terminates at index n and writes nothing after it has touched n + 1.
    std::size_t touched() const {
        std::size_t count = buffer.size() - 1;
        while (count > 0 && buffer[count - 1] == kMark) {
            --count;
        }
        return count;
    }

private:
    static constexpr char kMark = '~'; // in none of the plug-in's texts

    std::array<char, 257> buffer{};
};
