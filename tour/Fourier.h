// The power of a sound by frequency.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

struct fftwf_plan_s; // the Fourier library's

namespace zelvatone {

class Fourier {
public:
    // Looks at `window` samples at a time, a power of two. From one thread at a time.
    explicit Fourier(int window);

    int window() const { return static_cast<int>(shape_.size()); }
    std::size_t bins() const { return shape_.size() / 2 + 1; }
    // The power in each bin of the samples around `centre`, by Hann's window; a sine of full scale
    // in the middle of a bin comes to 1. There is silence before and after the samples. Bin i
    // stands for i / window() of the sample rate. From any thread.
    std::vector<float> powers(std::span<const float> samples, double centre) const;

private:
    struct PlanFree {
        void operator()(fftwf_plan_s* plan) const;
    };
    std::vector<float> shape_; // of the window
    std::unique_ptr<fftwf_plan_s, PlanFree> plan_;
};

} // namespace zelvatone
