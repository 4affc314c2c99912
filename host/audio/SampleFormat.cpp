#include "host/audio/SampleFormat.h"

#include <cmath>

namespace zelvatone {

std::int64_t quantise(std::span<const float> samples, int bits, std::span<std::int32_t> numbers) {
    const double fullScale = std::ldexp(1.0, bits - 1);
    const std::int32_t toUpperBits = 1 << (32 - bits);
    std::int64_t clipped = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        double number = std::nearbyint(static_cast<double>(samples[i]) * fullScale);
        if (number > fullScale - 1.0 || number < -fullScale) {
            number = number > 0.0 ? fullScale - 1.0 : -fullScale;
            ++clipped;
        }
        numbers[i] = static_cast<std::int32_t>(number) * toUpperBits;
    }
    return clipped;
}

} // namespace zelvatone
