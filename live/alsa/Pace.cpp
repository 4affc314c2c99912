#include "live/alsa/Pace.h"

namespace zelvatone {

namespace {

// Cards and computers disagree by up to 0.1 %: 1 ms of this.
constexpr std::chrono::seconds kStretch{1};
// For that, and for blocks that a card takes in bursts.
constexpr std::chrono::milliseconds kTolerance{20};

} // namespace

Pace::Pace(int rate, std::int64_t bufferFrames)
    : frame_(1.0 / rate), allowance_(frame_ * static_cast<double>(bufferFrames) + kTolerance) {}

std::optional<Pace::Clock::time_point> Pace::afterBlock(std::int32_t frames,
                                                        Clock::time_point now) {
    if (now - start_ > kStretch) {
        start_ = now;
        frames_ = 0;
    }
    frames_ += frames;
    const auto due = start_ + std::chrono::duration_cast<Clock::duration>(
                                  frame_ * static_cast<double>(frames_) - allowance_);
    return due > now ? std::optional(due) : std::nullopt;
}

} // namespace zelvatone
