// A clock that adds a rounded amount at every sample, read ahead.
#pragma once

#include "engine/fast/ModeKernel.h"

#include <array>
#include <bit>
#include <cstdint>

namespace zelvatone {

// As long as a clock stays within one power of two, every sample adds the same whole number of its
// last places, and any later time follows from one multiplication. So a run is made of a few
// stretches with uniform steps, most often of one. Where sums lie in the middle between two
// numbers, steps may alternate: then the clock counts sample by sample.
template<class Time>
class SampleClock {
public:
    // `start` and `increment` in seconds, `increment` above zero; `samples` (1..kRunSamples): how
    // far it will be read.
    SampleClock(Time start, double increment, std::int32_t samples) {
        stretches_[0] = stretchFrom(0, start, increment, samples);
        if (stretches_[0].last < samples) {
            addStretches(start, increment, samples);
        }
    }

    // The time after `samples` more samples, 0 to the number given to the constructor.
    Time at(std::int32_t samples) const {
        std::int32_t i = 0;
        while (i < stretchCount_ && stretches_[i].last < samples) {
            ++i;
        }
        return i < stretchCount_ ? stretches_[i].at(samples) : counted_[samples];
    }

    // Writes the times after 1, 2 and so on to `samples` samples to `times`.
    void read(std::int32_t samples, Time* times) const {
        std::int32_t k = 1;
        for (std::int32_t i = 0; i < stretchCount_; ++i) {
            const Stretch stretch = stretches_[i];
            for (; k <= samples && k <= stretch.last; ++k) {
                times[k - 1] = stretch.at(k);
            }
        }
        for (; k <= samples; ++k) {
            times[k - 1] = counted_[k];
        }
    }

private:
    // From 0 on: one for 0, for 1 and up to 2, 4 and so on to 64 increments, and one more for a
    // start that is not 0.
    static constexpr std::int32_t kMostStretches = 9;
    static constexpr std::uint32_t kExponentBit = 52; // the lowest of a double's exponent

    // Samples `first` to `last`, with uniform steps between them.
    struct Stretch {
        Time at(std::int32_t samples) const {
            return static_cast<Time>(start + (samples - first) * step);
        }
        // If so, the product is a number of last places that the clock's format has room for.
        bool isInOnePower(std::int32_t samples) const {
            return exponentBits(static_cast<double>(start)) ==
                   exponentBits(start + (samples - first) * step);
        }

        std::int32_t first, last;
        Time start; // at `first`
        double step;
    };

    // The stretch from sample `first` on, not beyond `samples`; without a last sample if the steps
    // there are not uniform.
    static Stretch stretchFrom(std::int32_t first, Time start, double increment,
                               std::int32_t samples) {
        const Time second = after(start, increment);
        Stretch stretch{.first = first,
                        .last = first,
                        .start = start,
                        .step = static_cast<double>(second) - start};
        if (first == samples || !stretch.isInOnePower(first + 1)) {
            return stretch;
        }
        if (static_cast<double>(after(second, increment)) - second != stretch.step &&
            stretch.isInOnePower(first + 2)) {
            stretch.last = first - 1;
            return stretch;
        }
        stretch.last = lastInOnePower(stretch, samples);
        return stretch;
    }

    // The stretches after the first, which may be none if its steps are not uniform, and the
    // samples after them.
    [[gnu::noinline]] void addStretches(Time start, double increment, std::int32_t samples) {
        stretchCount_ = 0;
        std::int32_t first = 0;
        while (first <= samples && stretchCount_ < kMostStretches) {
            const Stretch stretch = stretchFrom(first, start, increment, samples);
            if (stretch.last < first) {
                break;
            }
            stretches_[stretchCount_++] = stretch;
            start = after(stretch.at(stretch.last), increment);
            first = stretch.last + 1;
        }
        for (; first <= samples; ++first) {
            counted_[first] = start;
            start = after(start, increment);
        }
    }

    static std::int32_t lastInOnePower(const Stretch& stretch, std::int32_t samples) {
        if (stretch.isInOnePower(samples)) {
            return samples;
        }
        const std::uint64_t power = exponentBits(static_cast<double>(stretch.start));
        const auto next = std::bit_cast<double>((power + 1) << kExponentBit);
        const double steps = (next - stretch.start) / stretch.step; // rounded to either side
        std::int32_t last = stretch.first + static_cast<std::int32_t>(steps);
        while (!stretch.isInOnePower(last)) {
            --last;
        }
        return last;
    }

    static Time after(Time time, double increment) { return static_cast<Time>(time + increment); }

    static std::uint64_t exponentBits(double value) {
        return std::bit_cast<std::uint64_t>(value) >> kExponentBit;
    }

    std::int32_t stretchCount_ = 1;
    std::array<Stretch, kMostStretches> stretches_;
    std::array<Time, kRunSamples + 1> counted_; // after the last stretch
};

} // namespace zelvatone
