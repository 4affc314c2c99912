#include "lv2/bundle/Turtle.h"

#include <array>
#include <charconv>

namespace zelvatone::lv2 {

std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            result += '\\';
        }
        result += c;
    }
    return result += '"';
}

std::string turtleUri(std::string_view uri) {
    return "<" + std::string(uri) + ">";
}

std::string decimal(float value) {
    // Room for the longest float: a sign, "0." and 149 digits.
    std::array<char, 160> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::fixed);
    std::string text(buffer.data(), end.ptr);
    if (text.find('.') == std::string::npos) {
        text += ".0";
    }
    return text;
}

} // namespace zelvatone::lv2
