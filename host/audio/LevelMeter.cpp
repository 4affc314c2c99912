#include "host/audio/LevelMeter.h"

#include <algorithm>
#include <cmath>

namespace zelvatone {

void LevelMeter::measure(std::span<const float> samples) {
    for (const float sample : samples) {
        peak_ = std::max(peak_, std::abs(sample));
    }
}

double LevelMeter::peakDecibels() const {
    return 20.0 * std::log10(static_cast<double>(peak_));
}

} // namespace zelvatone
