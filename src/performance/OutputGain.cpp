#include "performance/OutputGain.h"

#include <algorithm>

namespace zelvatone {

namespace {

// Shorter is heard as a click, longer as a fade on fast moves of a fader.
constexpr double kMoveSeconds = 0.005;

} // namespace

void OutputGain::setSampleRate(double sampleRate) {
    steps_ = std::max(1, static_cast<std::int32_t>(sampleRate * kMoveSeconds));
    moved_ = steps_;
}

void OutputGain::moveTo(float gain) {
    if (gain == target_) {
        return;
    }
    const float share =
        steps_ == 0 ? 1.0F : static_cast<float>(moved_) / static_cast<float>(steps_);
    start_ += (target_ - start_) * share;
    target_ = gain;
    moved_ = hasBegun_ ? 0 : steps_;
}

void OutputGain::reset() {
    start_ = 1.0F;
    target_ = 1.0F;
    moved_ = steps_;
    hasBegun_ = false;
}

void OutputGain::apply(float* samples, std::int32_t count) {
    hasBegun_ = hasBegun_ || count > 0;
    std::int32_t i = 0;
    for (; i < count && moved_ < steps_; ++i) {
        ++moved_;
        const float share = static_cast<float>(moved_) / static_cast<float>(steps_);
        samples[i] *= start_ + (target_ - start_) * share;
    }
    if (target_ == 0.0F) {
        std::fill(samples + i, samples + count, 0.0F);
    } else if (target_ != 1.0F) {
        std::for_each(samples + i, samples + count, [this](float& s) { s *= target_; });
    }
}

} // namespace zelvatone
