#include "host/text/Format.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <locale>
#include <random>

namespace zelvatone {
namespace {

TEST(FormatText, PutsPartsInTheirPlaces) {
    EXPECT_EQ(formatText("{} of {}", 3, std::string("four")), "3 of four");
    EXPECT_EQ(formatText("[{:<5}|{:>3}]", "abc", 7), "[abc  |  7]");
    EXPECT_EQ(formatText("{{}}"), "{}");
}

// The C library rounds the exact value of the double, as decimals of a fixed length must be.
std::string printed(double number) {
    std::array<char, 400> text{}; // the largest double has 309 digits before the point
    const int length = std::snprintf(text.data(), text.size(), "%.3f", number);
    return {text.data(), static_cast<std::size_t>(length)};
}

TEST(FormatText, RoundsRealNumbersAsTheCLibraryDoes) {
    for (const double number : {0.0, -0.0, 0.0625, 0.1875, -2.5, 0.9995, 59.9995, 1e22, -1e-9,
                                std::numeric_limits<double>::max()}) {
        EXPECT_EQ(formatText("{:.3f}", number), printed(number));
    }
    std::mt19937 random(1);
    std::uniform_real_distribution<double> exponent(-12.0, 12.0);
    for (int i = 0; i < 10000; ++i) {
        const double number = std::pow(10.0, exponent(random));
        EXPECT_EQ(formatText("{:.3f}", number), printed(number));
    }
}

class CommaForPoint : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(FormatText, WritesAPointInEveryLocale) {
    const std::locale before =
        std::locale::global(std::locale(std::locale::classic(), new CommaForPoint));
    EXPECT_EQ(formatText("{:.1f} {} {}", 1234.5, 0.25, 1234567), "1234.5 0.25 1234567");
    std::locale::global(before);
}

} // namespace
} // namespace zelvatone
