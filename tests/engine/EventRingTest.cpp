// The queue of waiting events, as a queue.
#include "engine/EventRing.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace zelvatone {
namespace {

// The counter serves as a name here.
EventRing::Entry named(std::int32_t name) {
    return {name, nullptr};
}

std::int32_t readName(EventRing& ring) {
    EventRing::Entry entry{};
    EXPECT_EQ(ring.read(entry), 1);
    return entry.framesLeft;
}

TEST(EventRing, IsEmptyAtFirst) {
    const EventRing ring;
    EXPECT_EQ(ring.available(), 0);
    EXPECT_EQ(ring.free(), 256);
}

TEST(EventRing, GivesEntriesBackInTheirOrderByValue) {
    EventRing ring;
    EventRing::Entry entry = named(1);
    EXPECT_EQ(ring.write(entry), 1);
    entry.framesLeft = 2;
    EXPECT_EQ(ring.write(entry), 1);
    entry.framesLeft = 99;
    EXPECT_EQ(ring.available(), 2);
    EXPECT_EQ(readName(ring), 1);
    EXPECT_EQ(readName(ring), 2);
}

TEST(EventRing, ReadsNothingWhenEmpty) {
    EventRing ring;
    EventRing::Entry entry = named(5);
    EXPECT_EQ(ring.read(entry), 0);
    EXPECT_EQ(entry.framesLeft, 5);
    EXPECT_EQ(ring.available(), 0);
}

TEST(EventRing, Holds256EntriesAndLosesTheNext) {
    EventRing ring;
    for (std::int32_t i = 0; i < 256; ++i) {
        ASSERT_EQ(ring.write(named(i)), 1);
    }
    EXPECT_EQ(ring.available(), 256);
    EXPECT_EQ(ring.free(), 0);
    EXPECT_EQ(ring.write(named(256)), 0);
    EXPECT_EQ(ring.available(), 256);
    for (std::int32_t i = 0; i < 256; ++i) {
        ASSERT_EQ(readName(ring), i);
    }
    EXPECT_EQ(ring.available(), 0);
}

TEST(EventRing, KeepsOrderAndCountAllTheWayAround) {
    EventRing ring;
    std::int32_t written = 0;
    std::int32_t read = 0;
    // Three entries in, two out, so that the fill level meets the wrap of the indices at every
    // distance; then the ring stays nearly full for several rounds.
    while (read < 2000) {
        for (int i = 0; i < 3 && ring.free() > 0; ++i) {
            ASSERT_EQ(ring.write(named(written++)), 1);
        }
        for (int i = 0; i < 2; ++i) {
            ASSERT_EQ(readName(ring), read++);
        }
        ASSERT_EQ(ring.available(), written - read);
        ASSERT_EQ(ring.free(), 256 - (written - read));
    }
}

TEST(EventRing, TellsFullFromEmptyWhereverItsIndicesStand) {
    for (std::int32_t offset = 0; offset < 512; ++offset) {
        EventRing ring;
        for (std::int32_t i = 0; i < offset; ++i) {
            ring.write(named(i));
            readName(ring);
        }
        ASSERT_EQ(ring.available(), 0) << offset;
        for (std::int32_t i = 0; i < 256; ++i) {
            ASSERT_EQ(ring.write(named(i)), 1) << offset;
        }
        ASSERT_EQ(ring.write(named(0)), 0) << offset;
        ASSERT_EQ(ring.available(), 256) << offset;
    }
}

} // namespace
} // namespace zelvatone
