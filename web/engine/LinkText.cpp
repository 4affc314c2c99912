#include "web/engine/LinkText.h"

#include <cstddef>

namespace zelvatone {

namespace {

constexpr char kSeparator = '~';
constexpr char kEscape = '%';
constexpr std::string_view kDigits = "0123456789ABCDEF";

bool isPlain(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' ||
           c == '-' || c == '_';
}

std::string written(std::string_view field) {
    std::string text;
    for (const char c : field) {
        if (isPlain(c)) {
            text += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            text += {kEscape, kDigits[byte / 16U], kDigits[byte % 16U]};
        }
    }
    return text;
}

std::string readField(std::string_view field) {
    std::string text;
    for (std::size_t i = 0; i < field.size(); ++i) {
        char c = field[i];
        if (c == kEscape && i + 2 < field.size()) {
            // A digit that is none makes a byte that is not written like this.
            c = static_cast<char>(kDigits.find(field[i + 1]) * 16 + kDigits.find(field[i + 2]));
            i += 2;
        }
        text += c;
    }
    return text;
}

} // namespace

void LinkWriter::add(std::string_view field) {
    if (hasFields_) {
        text_ += kSeparator;
    }
    hasFields_ = true;
    text_ += written(field);
}

std::string LinkReader::next() {
    if (isAtEnd_) {
        isRight_ = false;
        return {};
    }
    const std::size_t end = rest_.find(kSeparator);
    const std::string_view field = rest_.substr(0, end);
    isAtEnd_ = end == std::string_view::npos;
    rest_.remove_prefix(isAtEnd_ ? rest_.size() : end + 1);
    std::string text = readField(field);
    if (written(text) != field) {
        isRight_ = false;
        return {};
    }
    return text;
}

} // namespace zelvatone
