// Keeps playing in time on a device that does not.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace zelvatone {

// A card makes the player wait while its buffer is full. The null device, and a file, take whatever
// they are given at once: there the clock says when. A card's own clock differs from it by far less
// than is let pass.
class Pace {
public:
    using Clock = std::chrono::steady_clock;

    // `bufferFrames`: that a device takes at once when it starts.
    Pace(int rate, std::int64_t bufferFrames);

    // After `frames` more have been written. Returns until when to wait; none: not at all.
    std::optional<Clock::time_point> afterBlock(std::int32_t frames, Clock::time_point now);

private:
    std::chrono::duration<double> frame_;
    std::chrono::duration<double> allowance_;
    Clock::time_point start_; // of the present stretch
    std::int64_t frames_ = 0; // written since
};

} // namespace zelvatone
