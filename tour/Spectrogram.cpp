#include "tour/Spectrogram.h"

#include "tour/LevelColours.h"

#include <algorithm>
#include <cmath>

namespace zelvatone {

namespace {

// Samples that a column looks at: a tenth of a second, which tells the notes of a low chord apart
// and still shows where a note begins.
constexpr int kWindow = 4096;
constexpr int kBins = kWindow / 2 + 1;

// Between two bins on a straight line.
double levelAt(const std::vector<float>& levels, double bin) {
    const double within = std::clamp(bin, 0.0, static_cast<double>(kBins - 1));
    const auto below = static_cast<std::size_t>(within);
    const std::size_t above = std::min(below + 1, levels.size() - 1);
    const double part = within - static_cast<double>(below);
    return (1.0 - part) * static_cast<double>(levels[below]) +
           part * static_cast<double>(levels[above]);
}

// The loudest between two bins: a high row covers many, and a partial in one of them must show.
double loudest(const std::vector<float>& levels, double low, double high) {
    double most = std::max(levelAt(levels, low), levelAt(levels, high));
    const auto last = static_cast<std::size_t>(std::clamp(high, 0.0, kBins - 1.0));
    for (auto bin = static_cast<std::size_t>(std::ceil(low)); bin <= last; ++bin) {
        most = std::max(most, static_cast<double>(levels[bin]));
    }
    return most;
}

std::uint8_t colourIndex(double decibels) {
    const double part = (decibels - kFaintestDecibels) / (kLoudestDecibels - kFaintestDecibels);
    return static_cast<std::uint8_t>(std::lround(std::clamp(part, 0.0, 1.0) * 255.0));
}

double frequencyAt(double height) {
    return kLowestPicturedHz * std::pow(kHighestPicturedHz / kLowestPicturedHz, height);
}

} // namespace

double heightOf(double hz) {
    return std::log(hz / kLowestPicturedHz) / std::log(kHighestPicturedHz / kLowestPicturedHz);
}

Spectrogram::Spectrogram(double sampleRate) : sampleRate_(sampleRate), fourier_(kWindow) {}

// Decibels by bin of the samples around `centre`.
std::vector<float> Spectrogram::levels(std::span<const float> samples, double centre) const {
    constexpr float kNothing = 1e-20F; // far below what is pictured; has a logarithm
    std::vector<float> levels = fourier_.powers(samples, centre);
    for (float& level : levels) {
        level = 10.0F * std::log10(level + kNothing);
    }
    return levels;
}

Picture Spectrogram::draw(std::span<const float> samples, int width, int height) const {
    Picture picture{width, height, {}, levelColours()};
    picture.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    const double columnFrames = static_cast<double>(samples.size()) / width;
    const double binsPerHz = kWindow / sampleRate_;
    for (int x = 0; x < width; ++x) {
        const auto column = levels(samples, (x + 0.5) * columnFrames);
        for (int y = 0; y < height; ++y) {
            const double low = frequencyAt(static_cast<double>(height - y - 1) / height);
            const double high = frequencyAt(static_cast<double>(height - y) / height);
            picture.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                           static_cast<std::size_t>(x)] =
                colourIndex(loudest(column, low * binsPerHz, high * binsPerHz));
        }
    }
    return picture;
}

} // namespace zelvatone
