#include "host/audio/NonFinite.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace zelvatone {
namespace {

TEST(NonFinite, SamplesThatAreNotFiniteAreSilencedAndCounted) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    std::vector<float> samples{std::nanf(""), 0.5F, kInfinity, -2.0F, -kInfinity};
    EXPECT_EQ(silenceNonFinite(samples), 3);
    EXPECT_THAT(samples, ::testing::ElementsAre(0.0F, 0.5F, 0.0F, -2.0F, 0.0F));
}

} // namespace
} // namespace zelvatone
