// How loud a rendered sound was.
#pragma once

#include <cstdint>
#include <span>

namespace zelvatone {

class LevelMeter {
public:
    // Takes samples of any channels, full scale 1.0. A sample that is no number or infinite is
    // set to 0 and counted, for no file and no loudspeaker can do anything with it.
    void measure(std::span<float> samples);

    float peak() const { return peak_; } // largest magnitude, 1.0 is full scale
    double peakDecibels() const;         // -infinity for silence
    std::int64_t brokenSamples() const { return brokenSamples_; }

private:
    float peak_ = 0.0F;
    std::int64_t brokenSamples_ = 0;
};

} // namespace zelvatone
