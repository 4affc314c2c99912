// A clock that adds a rounded amount at every sample, read ahead.
#pragma once

#include "engine/fast/ModeKernel.h"

#include <array>
#include <bit>
#include <cstdint>

namespace zelvatone {

// Steps are uniform: as long as a clock stays within one power of two, every sample adds the same
// whole number of its last places, and any later time follows from one multiplication. Where that
// does not hold, the clock counts sample by sample.
template<class Time>
class SampleClock {
public:
    // `start` and `increment` in seconds, `increment` above zero; `samples` (1..kRunSamples): how
    // far it will be read.
    SampleClock(Time start, double increment, std::int32_t samples) : start_(start) {
        const Time first = after(start, increment);
        step_ = static_cast<double>(first) - start;
        uniform_ = static_cast<double>(after(first, increment)) - first == step_ &&
                   staysWithinOnePower(samples);
        if (!uniform_) {
            count(increment, samples);
        }
    }

    // The time after `samples` more samples, 0 to the number given to the constructor.
    Time at(std::int32_t samples) const {
        return uniform_ ? static_cast<Time>(start_ + samples * step_) : counted_[samples];
    }

private:
    static Time after(Time time, double increment) { return static_cast<Time>(time + increment); }

    // If so, `samples * step_` is a number of last places that the clock's format has room for.
    bool staysWithinOnePower(std::int32_t samples) const {
        return exponentBits(static_cast<double>(start_)) == exponentBits(start_ + samples * step_);
    }

    static std::uint64_t exponentBits(double value) {
        return std::bit_cast<std::uint64_t>(value) >> 52U; // the exponent's bits
    }

    void count(double increment, std::int32_t samples) {
        counted_[0] = start_;
        for (std::int32_t k = 0; k < samples; ++k) {
            counted_[k + 1] = after(counted_[k], increment);
        }
    }

    Time start_;
    double step_;
    bool uniform_;
    std::array<Time, kRunSamples + 1> counted_; // only where it is not uniform
};

} // namespace zelvatone
