#include "tour/Waveform.h"

#include <algorithm>
#include <cmath>

namespace zelvatone {

namespace {

// A blue-green of middle lightness, which stands out from white as from black.
constexpr Colour kInk{42, 142, 152, 255};
constexpr double kReachOpacity = 0.45;
constexpr int kShades = 64; // of opacity; more than edges need

// What a column of the picture shows, each in -1..1.
struct Column {
    float lowest = 0.0F;
    float highest = 0.0F;
    float power = 0.0F; // root mean square
};

Column columnOf(std::span<const float> samples) {
    Column column;
    if (samples.empty()) {
        return column;
    }
    const auto [lowest, highest] = std::minmax_element(samples.begin(), samples.end());
    double squares = 0.0;
    for (const float sample : samples) {
        squares += static_cast<double>(sample) * static_cast<double>(sample);
    }
    column.lowest = *lowest;
    column.highest = *highest;
    column.power = static_cast<float>(std::sqrt(squares / static_cast<double>(samples.size())));
    return column;
}

// The part of the pixel row from `y` down to `y + 1` that lies between two places.
double coverage(double y, double top, double bottom) {
    return std::clamp(std::min(y + 1.0, bottom) - std::max(y, top), 0.0, 1.0);
}

// Places from the top for a sample value; a line of at least one pixel shows silence.
struct Extent {
    double top;
    double bottom;
};

Extent extentOf(double lowest, double highest, int height) {
    const double middle = height / 2.0;
    return {std::min(middle - highest * middle, middle - 0.5),
            std::max(middle - lowest * middle, middle + 0.5)};
}

} // namespace

Picture drawWaveform(std::span<const float> samples, int width, int height) {
    Picture picture{width, height, {}, {}};
    for (int i = 0; i < kShades; ++i) {
        Colour shade = kInk;
        shade[3] = static_cast<std::uint8_t>(i * 255 / (kShades - 1));
        picture.colours.push_back(shade);
    }
    const auto columns = static_cast<std::size_t>(width);
    picture.pixels.resize(columns * static_cast<std::size_t>(height));
    for (std::size_t x = 0; x < columns; ++x) {
        const std::size_t start = x * samples.size() / columns;
        const std::size_t end = (x + 1) * samples.size() / columns;
        const Column column = columnOf(samples.subspan(start, end - start));
        const Extent reach = extentOf(column.lowest, column.highest, height);
        const Extent power = extentOf(std::max(-column.power, column.lowest),
                                      std::min(column.power, column.highest), height);
        for (int y = 0; y < height; ++y) {
            const double opacity = std::max(kReachOpacity * coverage(y, reach.top, reach.bottom),
                                            coverage(y, power.top, power.bottom));
            picture.pixels[static_cast<std::size_t>(y) * columns + x] =
                static_cast<std::uint8_t>(std::lround(opacity * (kShades - 1)));
        }
    }
    return picture;
}

} // namespace zelvatone
