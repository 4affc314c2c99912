// An envelope's run against its ticks.
#include "engine/fast/EnvelopeRun.h"

#include "tests/kernel/Random.h"

#include "engine/fast/ModeKernel.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

using namespace zelvatone;

namespace {

void expectLikeTicking(ADSR envelope, double dt, std::int32_t samples) {
    ADSR expected = envelope;
    std::array<float, kRunSamples> levels{};
    const std::int32_t ticks = runEnvelope(envelope, dt, samples, levels.data());
    for (std::int32_t k = 0; k < ticks; ++k) {
        ASSERT_EQ(levels[k], expected.tick(dt)) << "sample " << k << " of " << samples;
    }
    ASSERT_TRUE(ticks == samples || !expected.isActive());
    ASSERT_EQ(envelope.time, expected.time);
    ASSERT_EQ(envelope.level, expected.level);
    ASSERT_EQ(envelope.state, expected.state);
}

// From a few samples to a good second, so that corners fall into many runs.
double someSeconds(Random& random) {
    return std::ldexp(static_cast<double>(random.fraction()), -random.below(10));
}

TEST(EnvelopeRun, TicksLikeTheEnvelopeOnAllLinesAndAroundTheirCorners) {
    Random random(3);
    for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i) {
        const EnvelopeSettings settings{.attack = someSeconds(random),
                                        .decay = someSeconds(random),
                                        .sustain = static_cast<double>(random.fraction()),
                                        .release = someSeconds(random)};
        ADSR envelope(&settings);
        envelope.trigger(static_cast<double>(random.fraction()));
        envelope.level = static_cast<double>(random.fraction());
        if (random.oneIn(2)) {
            envelope.release();
        }
        envelope.time = 2.0 * someSeconds(random);
        expectLikeTicking(envelope, 1.0 / 48000.0, random.between(1, kRunSamples));
    }
}

TEST(EnvelopeRun, EndsWithTheTickThatEndsTheFade) {
    const EnvelopeSettings settings{.attack = 0.1, .decay = 0.1, .sustain = 1.0, .release = 0.0105};
    ADSR envelope(&settings);
    envelope.trigger(1.0);
    envelope.level = 1.0;
    envelope.release();
    std::array<float, kRunSamples> levels{};
    // At 1 kHz the eleventh tick is the first at or past 10.5 ms.
    EXPECT_EQ(runEnvelope(envelope, 0.001, kRunSamples, levels.data()), 11);
    EXPECT_EQ(levels[10], 0.0F);
    EXPECT_FALSE(envelope.isActive());
}

} // namespace
