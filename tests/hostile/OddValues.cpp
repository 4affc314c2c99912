#include "tests/hostile/OddValues.h"

#include <cstdint>
#include <limits>

namespace zelvatone::test {

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr VstInt32 kLowest = std::numeric_limits<VstInt32>::min();
constexpr VstInt32 kHighest = std::numeric_limits<VstInt32>::max();

} // namespace

float oddParameter(Random& random) {
    if (!random.oneIn(8)) {
        return random.oneOf({0.0F, 1.0F, 0.5F, random.fraction(), random.fraction()});
    }
    return random.oneOf({kNan, kInfinity, -kInfinity, 3e38F, -3e38F, 1e-45F, -0.0F, 1.0000001F,
                         -1e-7F, 2.0F, -1.0F, 1e9F});
}

float oddRate(Random& random) {
    if (!random.oneIn(3)) {
        return random.oneOf({8000.0F, 22050.0F, 44100.0F, 48000.0F, 96000.0F, 192000.0F});
    }
    return random.oneOf(
        {0.0F, 1.0F, 1e-38F, 3e38F, -44100.0F, kNan, kInfinity, -kInfinity, 1e9F, 0.001F});
}

VstInt32 oddIndex(Random& random, VstInt32 count) {
    if (!random.oneIn(8)) {
        return random.below(count);
    }
    return random.oneOf({-1, -2, kLowest, kHighest, count + 1, count + 1000, -count});
}

VstIntPtr oddNumber(Random& random) {
    switch (random.below(3)) {
    case 0:
        return random.between(-1, 130);
    case 1:
        return static_cast<std::int32_t>(random.word());
    default:
        return random.oneOf({VstIntPtr{kLowest}, VstIntPtr{kHighest},
                             std::numeric_limits<VstIntPtr>::min(),
                             std::numeric_limits<VstIntPtr>::max()});
    }
}

VstInt32 oddOffset(Random& random, VstInt32 frames) {
    if (!random.oneIn(10)) {
        return random.below(frames + 1);
    }
    // None between these: a test cannot wait for minutes until such an event acts.
    return random.oneOf({-1, -1000, kLowest + 1, -kHighest / 2, frames + 1, 3000});
}

} // namespace zelvatone::test
