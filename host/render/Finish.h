// What is done to an instrument's sound before it is mixed.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace zelvatone {

// For a sound with DC: below all that is heard as a tone, and high enough to be settled after a
// tenth of a second.
inline constexpr double kDcBlockHz = 5.0;

struct FinishPlan {
    bool isMono = false;         // the average of all channels in one
    double dcBlockHz = 0.0;      // corner of a high-pass filter; 0: none
    std::int64_t fadeStart = -1; // frame; below 0: no fade
    std::int64_t fadeEnd = -1;   // frame from which on it is silent; after fadeStart
};

// Of one instrument, from its first frame on. Each step is linear or the same for all, so finished
// sounds add up to the finished mix.
class Finish {
public:
    // `sampleRate` in Hz.
    Finish(const FinishPlan& plan, int channels, double sampleRate);

    // Of the result: all, or one.
    int channels() const { return plan_.isMono ? 1 : channels_; }
    // Finishes the next frames in place, channels interleaved. Returns those of the result, which
    // stand at the front. Samples that are infinite or not a number pass through as they are.
    std::span<float> apply(std::span<float> samples);

private:
    // A high-pass of the first order; the state of one channel.
    struct DcBlock {
        double input = 0.0;
        double output = 0.0;
    };

    void blockDc(std::span<float> samples);
    std::span<float> average(std::span<float> samples) const;
    void fade(std::span<float> samples) const;

    FinishPlan plan_;
    int channels_;
    double dcFeedback_;
    std::vector<DcBlock> dcBlocks_; // by channel
    std::int64_t position_ = 0;     // frame
};

} // namespace zelvatone
