#include "host/text/Numbers.h"

#include <array>
#include <charconv>
#include <cmath>

namespace zelvatone {

namespace {

template<typename Number>
std::optional<Number> parse(std::string_view text) {
    Number number{};
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end) {
        return std::nullopt;
    }
    return number;
}

} // namespace

std::optional<int> wholeNumber(std::string_view text) {
    return parse<int>(text);
}

std::optional<double> realNumber(std::string_view text) {
    const auto number = parse<double>(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::string shortestText(float number) {
    std::array<char, 32> text{}; // a sign, nine digits, a point, an exponent
    const auto result = std::to_chars(text.data(), text.data() + text.size(), number);
    return {text.data(), result.ptr};
}

double shortestDouble(float number) {
    return parse<double>(shortestText(number)).value_or(static_cast<double>(number));
}

} // namespace zelvatone
