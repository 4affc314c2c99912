// How loud a rendered sound was.
#pragma once

#include <span>

namespace zelvatone {

class LevelMeter {
public:
    // Takes samples of any channels, full scale 1.0; all of them finite.
    void measure(std::span<const float> samples);

    float peak() const { return peak_; } // largest magnitude, 1.0 is full scale
    double peakDecibels() const;         // -infinity for silence

private:
    float peak_ = 0.0F;
};

} // namespace zelvatone
