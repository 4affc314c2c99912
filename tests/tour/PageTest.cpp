// The page's texts, and that its colours can be told apart.
#include "tests/support/TemporaryFolder.h"
#include "tour/PageText.h"
#include "tour/StopCard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>
#include <string>
#include <vector>

namespace zelvatone {
namespace {

using ::testing::HasSubstr;

TEST(Filled, ReplacesNamesAndLooksThroughNoValue) {
    EXPECT_EQ(filled("<{{a}}|{{b}}|{{a}}>", {{"a", "{{b}}"}, {"b", "2"}}), "<{{b}}|2|{{b}}>");
    EXPECT_EQ(filled("{{unknown}}, {{open", {}), ", {{open");
}

TEST(SignedText, HasAMinusOfANumbersWidthAndNoneForZero) {
    EXPECT_EQ(signedText(-1.25, 2), "−1.25");
    EXPECT_EQ(signedText(-0.04, 1), "0.0");
    EXPECT_EQ(signedText(0.0, 2, "+"), "0.00");
    EXPECT_EQ(signedText(0.5, 1, "+"), "+0.5");
}

TEST(RenderCommand, NamesProgramAndPlugIn) {
    TourStop stop;
    stop.name = "Cyborg Pad";
    stop.file = "07-Cyborg-Pad";
    EXPECT_EQ(renderCommand(stop, ""),
              "zelvatone render song.mid -o 07-Cyborg-Pad.wav --program 'Cyborg Pad'");
    EXPECT_THAT(renderCommand(stop, "my synth.so"), HasSubstr("' --plugin 'my synth.so'"));
}

// What stands in `text` between each `begin` and the next ';'.
std::vector<std::string> valuesAfter(const std::string& begin, const std::string& text) {
    std::vector<std::string> values;
    for (std::size_t at = text.find(begin); at != std::string::npos; at = text.find(begin, at)) {
        at += begin.size();
        values.push_back(text.substr(at, text.find(';', at) - at));
    }
    return values;
}

// The colours among the style's custom properties, "line" and so on: `scheme` 0 for light, 1 for
// dark.
std::map<std::string, std::string> colours(std::size_t scheme) {
    const std::string style = readText(TEST_PAGE "style.css");
    std::map<std::string, std::string> colours;
    std::size_t at = 0;
    for (std::size_t i = 0; i <= scheme; ++i) {
        at = style.find(":root {", at) + 1;
    }
    const std::string block = style.substr(at, style.find('}', at) - at);
    for (const std::string& property : valuesAfter("  --", block)) {
        const std::size_t colon = property.find(": #");
        if (colon != std::string::npos && property.size() == colon + 9) {
            colours[property.substr(0, colon)] = property.substr(colon + 3);
        }
    }
    return colours;
}

// The relative luminance that the accessibility guidelines define.
double luminance(const std::string& colour) {
    constexpr std::array kWeights{0.2126, 0.7152, 0.0722};
    double sum = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
        const double value = std::stoi(colour.substr(2 * i, 2), nullptr, 16) / 255.0;
        sum += kWeights.at(i) *
               (value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4));
    }
    return sum;
}

double contrast(const std::string& one, const std::string& other) {
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

TEST(Contrast, IsThatOfTheGuidelinesExamples) {
    EXPECT_NEAR(contrast("ffffff", "000000"), 21.0, 1e-9);
    EXPECT_NEAR(contrast("777777", "ffffff"), 4.48, 0.005);
}

class PageColours : public ::testing::TestWithParam<std::size_t> {};

TEST_P(PageColours, SetBordersApartByThreeToOne) {
    auto scheme = colours(GetParam());
    ASSERT_EQ(scheme.size(), 8U);
    for (const char* border : {"line", "accent"}) {
        for (const char* ground : {"ground", "card"}) {
            EXPECT_GE(contrast(scheme[border], scheme[ground]), 3.0) << border << " on " << ground;
        }
    }
}

TEST_P(PageColours, SetTextsApartByFourAndAHalfToOne) {
    auto scheme = colours(GetParam());
    for (const char* text : {"ink", "soft", "accent"}) {
        for (const char* ground : {"ground", "card"}) {
            EXPECT_GE(contrast(scheme[text], scheme[ground]), 4.5) << text << " on " << ground;
        }
    }
    EXPECT_GE(contrast(scheme["ink"], scheme["tint"]), 4.5);
    EXPECT_GE(contrast(scheme["on-accent"], scheme["accent"]), 4.5);
}

INSTANTIATE_TEST_SUITE_P(Of, PageColours, testing::Values(0, 1),
                         [](const auto& scheme) { return scheme.param == 0 ? "Light" : "Dark"; });

// Every frame is drawn in one of the colours above. Only the lines of the frequency axis are
// fainter: they lie in a picture and have labels.
TEST(PageColours, DrawAllBorders) {
    const std::string style = readText(TEST_PAGE "style.css");
    int found = 0;
    for (const char* property : {"border: ", "border-top: ", "border-bottom: "}) {
        for (const std::string& value : valuesAfter(property, style)) {
            if (value != "1px solid #ffffff2e") {
                EXPECT_EQ(value, "1px solid var(--line)");
                ++found;
            }
        }
    }
    EXPECT_GE(found, 5);
}

} // namespace
} // namespace zelvatone
