#include "tour/PageText.h"

#include "host/text/Format.h"

#include <cmath>

namespace zelvatone {

std::string filled(std::string_view part, const PageValues& values) {
    std::string text;
    while (true) {
        const std::size_t open = part.find("{{");
        const std::size_t close = part.find("}}", open);
        if (open == std::string_view::npos || close == std::string_view::npos) {
            return text + std::string(part);
        }
        text += part.substr(0, open);
        const std::string_view name = part.substr(open + 2, close - open - 2);
        for (const auto& [key, value] : values) {
            text += key == name ? value : "";
        }
        part.remove_prefix(close + 2);
    }
}

std::string htmlText(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string percentText(double part) {
    return formatText("{:.2f}%", part * 100.0);
}

std::string signedText(double number, int digits, std::string_view plus) {
    const std::string size = formatText("{:.{}f}", std::abs(number), digits);
    const bool isZero = size.find_first_not_of("0.") == std::string::npos;
    const std::string_view sign = number < 0.0 ? "\u2212" : plus;
    return formatText("{}{}", isZero ? "" : sign, size);
}

} // namespace zelvatone
