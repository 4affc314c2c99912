#include "host/render/Finish.h"

#include <cmath>
#include <numbers>

namespace zelvatone {

Finish::Finish(const FinishPlan& plan, int channels, double sampleRate)
    : plan_(plan),
      channels_(channels),
      // The pole of the filter: what is left of a step after one sample.
      dcFeedback_(std::exp(-2.0 * std::numbers::pi * plan.dcBlockHz / sampleRate)),
      dcBlocks_(static_cast<std::size_t>(channels)) {}

void Finish::blockDc(std::span<float> samples) {
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (!std::isfinite(samples[i])) {
            continue; // it would stay in the filter for ever
        }
        DcBlock& block = dcBlocks_[i % dcBlocks_.size()];
        const double input = samples[i];
        block.output = input - block.input + dcFeedback_ * block.output;
        block.input = input;
        samples[i] = static_cast<float>(block.output);
    }
}

// Of two equal channels, the average is either, to the bit.
std::span<float> Finish::average(std::span<float> samples) const {
    const auto width = static_cast<std::size_t>(channels_);
    const std::size_t frames = samples.size() / width;
    for (std::size_t frame = 0; frame < frames; ++frame) {
        float sum = 0.0F;
        for (const float sample : samples.subspan(frame * width, width)) {
            sum += sample;
        }
        samples[frame] = sum / static_cast<float>(channels_);
    }
    return samples.first(frames);
}

// Half a cosine: without an edge at either end.
void Finish::fade(std::span<float> samples) const {
    const auto width = static_cast<std::size_t>(channels());
    const auto length = static_cast<double>(plan_.fadeEnd - plan_.fadeStart);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const std::int64_t frame = position_ + static_cast<std::int64_t>(i / width);
        if (frame >= plan_.fadeEnd) {
            samples[i] = 0.0F;
        } else if (frame > plan_.fadeStart) {
            const double done = static_cast<double>(frame - plan_.fadeStart) / length;
            samples[i] *= static_cast<float>(0.5 + 0.5 * std::cos(std::numbers::pi * done));
        }
    }
}

std::span<float> Finish::apply(std::span<float> samples) {
    if (plan_.dcBlockHz > 0.0) {
        blockDc(samples);
    }
    const auto frames = static_cast<std::int64_t>(samples.size()) / channels_;
    const std::span<float> finished = plan_.isMono ? average(samples) : samples;
    if (plan_.fadeStart >= 0 && position_ + frames > plan_.fadeStart) {
        fade(finished);
    }
    position_ += frames;
    return finished;
}

} // namespace zelvatone
