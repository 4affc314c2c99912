#include "formats/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace zelvatone {

namespace {

#ifdef __cpp_lib_to_chars

template<class Number>
std::optional<Number> numberIn(std::string_view text) {
    Number number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

std::string shortest(float value) {
    std::array<char, 32> text{}; // a sign, nine digits, a point, an exponent
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), result.ptr};
}

#else // a library that reads floats by C's functions alone, in a system without locales

void read(const char* text, char** end, float& number) {
    number = std::strtof(text, end);
}

void read(const char* text, char** end, double& number) {
    number = std::strtod(text, end);
}

template<class Number>
std::optional<Number> numberIn(std::string_view text) {
    // Those functions also take blanks, signs, hexadecimal numbers and names.
    constexpr std::string_view kDecimal = "0123456789.eE+-";
    if (text.empty() || text.front() == '+' ||
        text.find_first_not_of(kDecimal) != std::string_view::npos) {
        return std::nullopt;
    }
    const std::string whole(text);
    char* end = nullptr;
    Number number = 0;
    read(whole.c_str(), &end, number);
    if (end != whole.c_str() + whole.size() || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number;
}

std::string shortest(float value) {
    constexpr int kEnoughDigits = 9; // for every float
    std::array<char, 32> text{};
    for (int digits = 1; digits <= kEnoughDigits; ++digits) {
        std::snprintf(text.data(), text.size(), "%.*g", digits, static_cast<double>(value));
        if (std::strtof(text.data(), nullptr) == value) {
            break;
        }
    }
    return text.data();
}

#endif

} // namespace

std::string exactText(float value) {
    return shortest(value);
}

std::optional<float> floatIn(std::string_view text) {
    return numberIn<float>(text);
}

std::optional<double> doubleIn(std::string_view text) {
    return numberIn<double>(text);
}

} // namespace zelvatone
