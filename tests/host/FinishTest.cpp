#include "host/render/Finish.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <limits>
#include <numbers>

namespace zelvatone {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

std::vector<float> finished(const FinishPlan& plan, int channels, std::vector<float> samples,
                            double rate = 1000.0) {
    Finish finish(plan, channels, rate);
    const auto result = finish.apply(samples);
    return {result.begin(), result.end()};
}

TEST(Finish, ChangesNothingWithoutAPlan) {
    EXPECT_THAT(finished({}, 2, {0.1F, -0.2F, 0.3F, 0.4F}), ElementsAre(0.1F, -0.2F, 0.3F, 0.4F));
}

TEST(Finish, AveragesTheChannelsIntoOne) {
    EXPECT_THAT(finished({.isMono = true}, 2, {0.25F, 0.75F, -1.0F, 0.5F}),
                ElementsAre(0.5F, -0.25F));
    EXPECT_THAT(finished({.isMono = true}, 1, {0.3F, 0.7F}), ElementsAre(0.3F, 0.7F));
}

TEST(Finish, KeepsEveryBitOfEqualChannelsInMono) {
    for (const float x : {0.1F, 1.0F / 3.0F, -0.7F, 1e-42F, 2.5F}) {
        EXPECT_THAT(finished({.isMono = true}, 2, {x, x}), ElementsAre(x));
    }
}

// A step falls by the factor e in 1 / (2 pi 5 Hz) seconds, 31.8 ms.
TEST(Finish, LetsAnOffsetDieAwayAtTheCornerFrequency) {
    const double rate = 10000.0;
    const auto step = finished({.dcBlockHz = 5.0}, 1, std::vector<float>(10000, 0.5F), rate);
    const auto at = static_cast<std::size_t>(std::lround(rate / (2.0 * std::numbers::pi * 5.0)));
    EXPECT_FLOAT_EQ(step[0], 0.5F);
    EXPECT_NEAR(step[at], 0.5 / std::numbers::e, 0.0005);
    EXPECT_NEAR(step.back(), 0.0, 1e-6);
}

// The filter takes 0.01 dB off a tone of 100 Hz, and all of the offset.
TEST(Finish, LeavesTonesInPlaceWithoutTheirOffset) {
    const double rate = 44100.0;
    std::vector<float> tone(44100);
    for (std::size_t i = 0; i < tone.size(); ++i) {
        const double phase = 2.0 * std::numbers::pi * 100.0 * static_cast<double>(i) / rate;
        tone[i] = static_cast<float>(0.25 + 0.5 * std::sin(phase));
    }
    const auto result = finished({.dcBlockHz = 5.0}, 1, tone, rate);
    const std::vector<float> end(result.end() - 4410, result.end()); // ten periods, settled
    double sum = 0.0;
    double power = 0.0;
    for (const float x : end) {
        sum += x;
        power += static_cast<double>(x) * x;
    }
    EXPECT_NEAR(sum / 4410.0, 0.0, 1e-4);
    // |1 - z| / |1 - r z| at the tone's place on the circle.
    const std::complex<double> z = std::polar(1.0, -2.0 * std::numbers::pi * 100.0 / rate);
    const double pole = std::exp(-2.0 * std::numbers::pi * 5.0 / rate);
    EXPECT_NEAR(std::sqrt(2.0 * power / 4410.0), 0.5 * std::abs(1.0 - z) / std::abs(1.0 - pole * z),
                1e-5);
}

TEST(Finish, LetsNoSampleThatIsNotANumberIntoTheFilter) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const auto result = finished({.dcBlockHz = 5.0}, 1, {0.5F, nan, 0.5F});
    EXPECT_TRUE(std::isnan(result[1]));
    EXPECT_TRUE(std::isfinite(result[2]));
}

TEST(Finish, FadesFrameByFrameWhateverTheBlocks) {
    const FinishPlan plan{.fadeStart = 4, .fadeEnd = 12};
    Finish finish(plan, 2, 1000.0);
    std::vector<float> all;
    for (int block = 0; block < 5; ++block) {
        std::vector<float> samples(6, 1.0F); // three frames
        const auto result = finish.apply(samples);
        all.insert(all.end(), result.begin(), result.end());
    }
    EXPECT_THAT(std::vector<float>(all.begin(), all.begin() + 10), Each(1.0F));
    EXPECT_NEAR(all[16], 0.5F, 1e-6); // halfway, at frame 8, on both channels
    EXPECT_EQ(all[16], all[17]);
    EXPECT_THAT(std::vector<float>(all.begin() + 24, all.end()), Each(0.0F));
}

} // namespace
} // namespace zelvatone
