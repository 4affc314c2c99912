#include "tour/LevelColours.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zelvatone {

namespace {

constexpr int kColours = 256;
// Lightness of both ends: black would swallow the lowest steps on most screens, white has no hue.
constexpr double kDarkest = 0.13;
constexpr double kLightest = 0.95;
// Degrees on the wheel of hues, violet to yellow by way of red. Blue and yellow, the ends, are the
// pair that the common kinds of colour blindness leave apart.
constexpr double kFirstHue = 278.0;
constexpr double kLastHue = 465.0;

using Linear = std::array<double, 3>; // red, green, blue, proportional to light

// A colour of the OKLab space as light, by the inverse of the space's published matrices.
Linear fromOklab(double lightness, double a, double b) {
    const double l = std::pow(lightness + 0.3963377774 * a + 0.2158037573 * b, 3.0);
    const double m = std::pow(lightness - 0.1055613458 * a - 0.0638541728 * b, 3.0);
    const double s = std::pow(lightness - 0.0894841775 * a - 1.2914855480 * b, 3.0);
    return {4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
            -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
            -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s};
}

bool isOnScreen(const Linear& light) {
    return std::all_of(light.begin(), light.end(), [](double x) { return x >= 0.0 && x <= 1.0; });
}

// The curve between light and the numbers that screens take (sRGB), and back.
double encoded(double light) {
    return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1.0 / 2.4) - 0.055;
}

double decoded(double number) {
    return number <= 0.04045 ? number / 12.92 : std::pow((number + 0.055) / 1.055, 2.4);
}

// The most colourful one of a lightness and a hue, up to a limit, that screens can show.
Colour colourAt(double lightness, double hueDegrees, double mostColourful) {
    const double hue = hueDegrees * std::numbers::pi / 180.0;
    constexpr int kSteps = 200; // of less colour, down to none, finer than a screen's
    Linear light{};
    for (int step = kSteps; step >= 0; --step) {
        const double chroma = mostColourful * step / kSteps;
        light = fromOklab(lightness, chroma * std::cos(hue), chroma * std::sin(hue));
        if (isOnScreen(light)) {
            break;
        }
    }
    Colour colour{0, 0, 0, 255};
    for (std::size_t i = 0; i < light.size(); ++i) {
        const double number = encoded(std::clamp(light[i], 0.0, 1.0));
        colour[i] = static_cast<std::uint8_t>(std::lround(number * 255.0));
    }
    return colour;
}

} // namespace

std::vector<Colour> levelColours() {
    std::vector<Colour> colours;
    for (int i = 0; i < kColours; ++i) {
        const double t = static_cast<double>(i) / (kColours - 1);
        // Strong in the middle; both ends are near to black and white, where colour is weak.
        const double chroma = 0.05 + 0.15 * std::sin(t * std::numbers::pi);
        colours.push_back(colourAt(kDarkest + (kLightest - kDarkest) * t,
                                   kFirstHue + (kLastHue - kFirstHue) * t, chroma));
    }
    return colours;
}

double lightnessOf(const Colour& colour) {
    const double r = decoded(colour[0] / 255.0);
    const double g = decoded(colour[1] / 255.0);
    const double b = decoded(colour[2] / 255.0);
    const double l = std::cbrt(0.4122214708 * r + 0.5363325363 * g + 0.0514459929 * b);
    const double m = std::cbrt(0.2119034982 * r + 0.6806995451 * g + 0.1073969566 * b);
    const double s = std::cbrt(0.0883024619 * r + 0.2817188376 * g + 0.6299787005 * b);
    return 0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s;
}

} // namespace zelvatone
