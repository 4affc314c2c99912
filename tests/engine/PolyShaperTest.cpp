// The shaper that "Reserved" sets.
#include "engine/PolyShaper.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <initializer_list>
#include <limits>

namespace zelvatone {
namespace {

using Coefficients = std::array<float, 17>;

Coefficients at(std::initializer_list<std::size_t> powers, float value) {
    Coefficients c{};
    for (const std::size_t power : powers) {
        c.at(power) = value;
    }
    return c;
}

Coefficients selected(std::int32_t set) {
    PolyShaper shaper;
    shaper.c.fill(9.0F); // every set clears what was there
    shaper.select(set);
    return shaper.c;
}

TEST(PolyShaper, BeginsAsTheIdentityOfOrder16) {
    const PolyShaper shaper;
    EXPECT_EQ(shaper.order, 16);
    EXPECT_EQ(shaper.c, at({1}, 1.0F));
    EXPECT_EQ(shaper.evaluate(0.375F), 0.375F);
}

TEST(PolyShaper, HasFourSetsOfCoefficients) {
    EXPECT_EQ(selected(1), at({1, 2, 8, 13}, 0.25F));
    EXPECT_EQ(selected(2), at({1, 4, 5, 6, 10}, 0.2F));
    EXPECT_EQ(selected(3), at({1, 3, 9, 10}, 0.25F));
    EXPECT_EQ(selected(4), at({1, 2, 9, 12, 13}, 0.2F));
}

TEST(PolyShaper, IsTheIdentityForAnyOtherSet) {
    for (const std::int32_t set : {0, 5, -1, std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_EQ(selected(set), at({1}, 1.0F)) << set;
    }
}

TEST(PolyShaper, EvaluatesItsPowers) {
    PolyShaper shaper;
    shaper.select(1);
    // (x + x^2 + x^8 + x^13) / 4 at one half, a sum of exact binary fractions.
    EXPECT_EQ(shaper.evaluate(0.5F), (0x1p-1F + 0x1p-2F + 0x1p-8F + 0x1p-13F) / 4.0F);
    EXPECT_EQ(shaper.evaluate(1.0F), 1.0F);
    EXPECT_EQ(shaper.evaluate(-1.0F), 0.0F);
}

TEST(PolyShaper, StartsAtThePowerOf16AndEndsAtTheConstant) {
    PolyShaper shaper;
    shaper.c = {};
    shaper.c[16] = 1.0F;
    shaper.c[0] = 3.0F;
    EXPECT_EQ(shaper.evaluate(2.0F), 65539.0F);
}

TEST(PolyShaper, RoundsEachStepOfHornersRuleToSinglePrecision) {
    PolyShaper shaper;
    shaper.c = {};
    shaper.c[1] = 1.0F;
    shaper.c[0] = -1.0F;
    shaper.c[2] = 0x1p-24F;
    // 2^-24 x 1 + 1 ties down to 1, so nothing of the square is left.
    EXPECT_EQ(shaper.evaluate(1.0F), 0.0F);
}

} // namespace
} // namespace zelvatone
