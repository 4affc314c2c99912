#include "tour/Spectrogram.h"

#include "tour/LevelColours.h"

#include <fftw3.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zelvatone {

namespace {

// Samples that a column looks at: a tenth of a second, which tells the notes of a low chord apart
// and still shows where a note begins.
constexpr int kWindow = 4096;
constexpr int kBins = kWindow / 2 + 1;

struct Free {
    void operator()(void* memory) const { fftwf_free(memory); }
};
using Samples = std::unique_ptr<float[], Free>;
using Bins = std::unique_ptr<fftwf_complex[], Free>;

// The library's own memory, which lies as its fastest routines want it.
Samples makeSamples() {
    return Samples(fftwf_alloc_real(kWindow));
}

Bins makeBins() {
    return Bins(fftwf_alloc_complex(kBins));
}

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

void Spectrogram::PlanFree::operator()(fftwf_plan_s* plan) const {
    fftwf_destroy_plan(plan);
}

Spectrogram::Spectrogram(double sampleRate)
    : sampleRate_(sampleRate),
      window_(kWindow),
      // Estimated, not measured: a measured plan could round differently from run to run.
      plan_(fftwf_plan_dft_r2c_1d(kWindow, makeSamples().get(), makeBins().get(), FFTW_ESTIMATE)) {
    for (int i = 0; i < kWindow; ++i) { // Hann's window, scaled so that a full sine comes to 1
        const double turn = 2.0 * std::numbers::pi * (i + 0.5) / kWindow;
        window_[static_cast<std::size_t>(i)] =
            static_cast<float>((0.5 - 0.5 * std::cos(turn)) * 4.0 / kWindow);
    }
}

// Decibels by bin of the samples around `centre`; there is silence before and after them.
std::vector<float> Spectrogram::levels(std::span<const float> samples, double centre) const {
    const auto start = static_cast<std::int64_t>(centre) - kWindow / 2;
    const Samples input = makeSamples();
    for (std::int64_t i = 0; i < kWindow; ++i) {
        const std::int64_t at = start + i;
        const bool isInside = at >= 0 && at < static_cast<std::int64_t>(samples.size());
        input[static_cast<std::size_t>(i)] =
            isInside ? samples[static_cast<std::size_t>(at)] * window_[static_cast<std::size_t>(i)]
                     : 0.0F;
    }
    const Bins output = makeBins();
    fftwf_execute_dft_r2c(plan_.get(), input.get(), output.get());
    std::vector<float> levels(kBins);
    for (std::size_t bin = 0; bin < levels.size(); ++bin) {
        const float power =
            output[bin][0] * output[bin][0] + output[bin][1] * output[bin][1] + 1e-20F;
        levels[bin] = 10.0F * std::log10(power);
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
