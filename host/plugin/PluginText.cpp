#include "host/plugin/PluginText.h"

#include <cstdint>
#include <cstring>

namespace zelvatone {

namespace {

std::uint8_t byteAt(std::string_view text, std::size_t index) {
    return static_cast<std::uint8_t>(text[index]);
}

// Length of the sequence that a first byte opens; 0 for a byte that opens none.
std::size_t sequenceLength(std::uint8_t first) {
    if (first < 0x80) {
        return 1;
    }
    if (first >= 0xC2 && first < 0xE0) {
        return 2;
    }
    if (first >= 0xE0 && first < 0xF0) {
        return 3;
    }
    return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

// Second bytes that would write a character longer than needed, a surrogate, or one past the last.
bool isForbiddenPair(std::uint8_t first, std::uint8_t second) {
    return (first == 0xE0 && second < 0xA0) || (first == 0xED && second >= 0xA0) ||
           (first == 0xF0 && second < 0x90) || (first == 0xF4 && second >= 0x90);
}

void appendLatin1(std::string& target, std::uint8_t byte) {
    target += static_cast<char>(0xC0U | (byte >> 6U));
    target += static_cast<char>(0x80U | (byte & 0x3FU));
}

bool isControl(std::uint8_t byte) {
    return byte < 0x20 || byte == 0x7F;
}

} // namespace

bool isUtf8(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t length = sequenceLength(byteAt(text, at));
        if (length == 0 || at + length > text.size()) {
            return false;
        }
        for (std::size_t i = 1; i < length; ++i) {
            if ((byteAt(text, at + i) & 0xC0U) != 0x80) {
                return false;
            }
        }
        if (length > 2 && isForbiddenPair(byteAt(text, at), byteAt(text, at + 1))) {
            return false;
        }
        at += length;
    }
    return true;
}

std::string cleanText(std::string_view text) {
    const bool utf8 = isUtf8(text);
    std::string clean;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::uint8_t byte = byteAt(text, i);
        if (isControl(byte)) {
            clean += ' ';
        } else if (byte >= 0x80 && !utf8) {
            appendLatin1(clean, byte);
        } else {
            clean += text[i];
        }
    }
    const std::size_t first = clean.find_first_not_of(' ');
    return first == std::string::npos
               ? std::string()
               : clean.substr(first, clean.find_last_not_of(' ') - first + 1);
}

std::string pluginText(const std::function<void(char*)>& fill) {
    PluginTextBuffer buffer{};
    fill(buffer.data());
    return cleanText({buffer.data(), strnlen(buffer.data(), buffer.size())});
}

} // namespace zelvatone
