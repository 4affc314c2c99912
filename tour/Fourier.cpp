#include "tour/Fourier.h"

#include <fftw3.h>

#include <cmath>
#include <cstdint>
#include <numbers>

namespace zelvatone {

namespace {

struct Free {
    void operator()(void* memory) const { fftwf_free(memory); }
};
using Samples = std::unique_ptr<float[], Free>;
using Bins = std::unique_ptr<fftwf_complex[], Free>;

// The library's own memory, which lies as its fastest routines want it.
Samples makeSamples(std::size_t window) {
    return Samples(fftwf_alloc_real(window));
}

Bins makeBins(std::size_t bins) {
    return Bins(fftwf_alloc_complex(bins));
}

} // namespace

void Fourier::PlanFree::operator()(fftwf_plan_s* plan) const {
    fftwf_destroy_plan(plan);
}

Fourier::Fourier(int window) : shape_(static_cast<std::size_t>(window)) {
    for (std::size_t i = 0; i < shape_.size(); ++i) { // scaled so that a full sine comes to 1
        const double turn = 2.0 * std::numbers::pi * (static_cast<double>(i) + 0.5) / window;
        shape_[i] = static_cast<float>((0.5 - 0.5 * std::cos(turn)) * 4.0 / window);
    }
    // Estimated, not measured: a measured plan could round differently from run to run.
    plan_.reset(fftwf_plan_dft_r2c_1d(window, makeSamples(shape_.size()).get(),
                                      makeBins(bins()).get(), FFTW_ESTIMATE));
}

std::vector<float> Fourier::powers(std::span<const float> samples, double centre) const {
    const auto start = static_cast<std::int64_t>(centre) - window() / 2;
    const Samples input = makeSamples(shape_.size());
    for (std::size_t i = 0; i < shape_.size(); ++i) {
        const std::int64_t at = start + static_cast<std::int64_t>(i);
        const bool isInside = at >= 0 && at < static_cast<std::int64_t>(samples.size());
        input[i] = isInside ? samples[static_cast<std::size_t>(at)] * shape_[i] : 0.0F;
    }
    const Bins output = makeBins(bins());
    fftwf_execute_dft_r2c(plan_.get(), input.get(), output.get());
    std::vector<float> powers(bins());
    for (std::size_t bin = 0; bin < powers.size(); ++bin) {
        powers[bin] = output[bin][0] * output[bin][0] + output[bin][1] * output[bin][1];
    }
    return powers;
}

} // namespace zelvatone
