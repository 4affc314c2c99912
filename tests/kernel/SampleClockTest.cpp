// Reading a clock ahead against letting it run.
#include "engine/fast/SampleClock.h"

#include "tests/kernel/Random.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <memory>

using zelvatone::kRunSamples;
using zelvatone::SampleClock;

namespace {

template<class Time>
void expectLikeCounting(Time start, double increment) {
    const SampleClock<Time> clock(start, increment, kRunSamples);
    std::array<Time, kRunSamples> times{};
    clock.read(kRunSamples, times.data());
    Time time = start;
    for (std::int32_t k = 0; k <= kRunSamples; ++k) {
        ASSERT_TRUE(k == 0 || times[k - 1] == clock.at(k));
        ASSERT_EQ(clock.at(k), time)
            << "after " << k << " samples from " << start << " by " << increment;
        time = static_cast<Time>(time + increment);
    }
}

template<class Time>
class SampleClocks : public testing::Test {};

using Times = testing::Types<float, double>;
TYPED_TEST_SUITE(SampleClocks, Times);

TYPED_TEST(SampleClocks, ReadLikeCountingAtAnyRateAndTime) {
    Random random(7);
    for (int i = 0; i < 20000; ++i) {
        const double rate = random.oneOf({22050.0, 44100.0, 48000.0, 96000.0, 192000.0});
        const auto start =
            static_cast<TypeParam>(std::ldexp(random.fraction(), random.below(24) - 12));
        expectLikeCounting(start, 1.0 / rate);
    }
}

TYPED_TEST(SampleClocks, ReadLikeCountingAcrossPowersOfTwo) {
    for (int power = -12; power <= 12; ++power) {
        for (int samplesBefore = 0; samplesBefore < kRunSamples; ++samplesBefore) {
            const double start = std::ldexp(1.0, power) - (samplesBefore + 0.3) / 48000.0;
            if (start >= 0.0) {
                expectLikeCounting(static_cast<TypeParam>(start), 1.0 / 48000.0);
            }
        }
    }
}

TYPED_TEST(SampleClocks, ReadLikeCountingFromZeroAndAlmostZero) {
    for (const double start : {0.0, 1.0e-44, 1.0e-20, 1.0e-6, 3.0e-5}) {
        expectLikeCounting(static_cast<TypeParam>(start), 1.0 / 48000.0);
        expectLikeCounting(static_cast<TypeParam>(start), 0x1p-16);
    }
}

// 1 / 65536 is half of a float's last place from 128 to 256: every sum lies between two floats, and
// the even number is taken.
TYPED_TEST(SampleClocks, ReadLikeCountingWhereSumsAreTies) {
    for (const float start : {128.0F, 128.00002F, 200.0F, 200.00002F}) {
        expectLikeCounting(static_cast<TypeParam>(start), 0x1p-16);
        expectLikeCounting(static_cast<TypeParam>(start), 3.0 * 0x1p-16);
    }
}

TEST(SampleClock, StandsStillOnceASampleIsBelowHalfALastPlace) {
    for (const float start : {512.0F, 700.0F, 1000.0F, 8192.0F}) {
        const auto clock = std::make_unique<SampleClock<float>>(start, 1.0 / 48000.0, kRunSamples);
        EXPECT_EQ(clock->at(kRunSamples), start);
    }
}

} // namespace
