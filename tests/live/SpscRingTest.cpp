#include "live/SpscRing.h"

#include <gtest/gtest.h>

#include <array>
#include <numeric>
#include <thread>

namespace zelvatone {
namespace {

TEST(SpscRing, HoldsAsManyElementsAsItWasMadeFor) {
    SpscRing<int> ring(3);
    EXPECT_TRUE(ring.write(1));
    EXPECT_TRUE(ring.write(2));
    EXPECT_TRUE(ring.write(3));
    EXPECT_FALSE(ring.write(4));
    int first = 0;
    EXPECT_TRUE(ring.read(first));
    EXPECT_EQ(first, 1);
    EXPECT_TRUE(ring.write(4));
}

TEST(SpscRing, WritesAllOfAListOrNothing) {
    SpscRing<int> ring(4);
    const std::array<int, 3> list{1, 2, 3};
    EXPECT_TRUE(ring.write(list));
    EXPECT_FALSE(ring.write(list));
    std::array<int, 8> read{};
    EXPECT_EQ(ring.read(std::span(read)), 3U);
    EXPECT_EQ(read[2], 3);
}

// Lengths that share no factor with the ring's, so that every place is an end once.
TEST(SpscRing, KeepsTheOrderBetweenTwoThreads) {
    constexpr int kCount = 100000;
    SpscRing<int> ring(101);
    std::jthread writer([&ring] {
        std::array<int, 7> list{};
        for (int next = 0; next < kCount;) {
            std::iota(list.begin(), list.end(), next);
            if (ring.write(list)) {
                next += static_cast<int>(list.size());
            } else {
                std::this_thread::yield();
            }
        }
    });
    std::array<int, 13> list{};
    int expected = 0;
    while (expected < kCount) {
        const std::size_t count = ring.read(std::span(list));
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_EQ(list.at(i), expected++);
        }
        if (count == 0) {
            std::this_thread::yield();
        }
    }
}

} // namespace
} // namespace zelvatone
