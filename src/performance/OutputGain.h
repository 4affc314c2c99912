// The volume of a finished signal.
#pragma once

#include <cstdint>

namespace zelvatone {

// Scales samples by a gain that moves to new values in 5 ms: a step would click. Audio thread.
class OutputGain {
public:
    // `sampleRate`: Hz. Ends a move at once.
    void setSampleRate(double sampleRate);
    // Moves to `gain`, 0 to 1, from the next sample on; at once before the first sample since
    // construction or reset.
    void moveTo(float gain);
    // To 1, without a move.
    void reset();
    // Scales the next samples in place. A gain of 1 leaves every bit as it is, one of 0 gives
    // zeros whatever the samples are.
    void apply(float* samples, std::int32_t count);

    // Whether all samples to come are scaled by the same gain.
    bool isSettled() const { return moved_ == steps_; }

private:
    float start_ = 1.0F;
    float target_ = 1.0F;
    std::int32_t steps_ = 0; // samples of a move
    std::int32_t moved_ = 0; // of them done
    bool hasBegun_ = false;
};

} // namespace zelvatone
