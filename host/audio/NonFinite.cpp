#include "host/audio/NonFinite.h"

#include <cmath>

namespace zelvatone {

std::int64_t silenceNonFinite(std::span<float> samples) {
    std::int64_t silenced = 0;
    for (float& sample : samples) {
        if (!std::isfinite(sample)) {
            sample = 0.0F;
            ++silenced;
        }
    }
    return silenced;
}

} // namespace zelvatone
