#include "vstguieditor/ControlGate.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <optional>
#include <thread>
#include <vector>

namespace zelvatone::test {
namespace {

TEST(ControlGate, IsClosedUntilItIsOpened) {
    ControlGate gate;
    EXPECT_FALSE(ControlGate::Pass(gate));
    gate.open();
    EXPECT_TRUE(ControlGate::Pass(gate));
    gate.close();
    EXPECT_FALSE(ControlGate::Pass(gate));
}

TEST(ControlGate, MayBeClosedTwiceAndOpenedAgain) {
    ControlGate gate;
    gate.open();
    gate.close();
    gate.close();
    gate.open();
    EXPECT_TRUE(ControlGate::Pass(gate));
}

TEST(ControlGate, LetsSeveralInAtOnce) {
    ControlGate gate;
    gate.open();
    const ControlGate::Pass first(gate);
    const ControlGate::Pass second(gate);
    EXPECT_TRUE(first);
    EXPECT_TRUE(second);
}

TEST(ControlGate, ClosesOnlyWhenNoThreadIsInside) {
    ControlGate gate;
    gate.open();
    std::optional<ControlGate::Pass> inside(std::in_place, gate);
    auto closing = std::async(std::launch::async, [&] { gate.close(); });
    EXPECT_EQ(closing.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
    // A thread that comes now is refused at once.
    EXPECT_FALSE(ControlGate::Pass(gate));
    inside.reset();
    EXPECT_EQ(closing.wait_for(std::chrono::seconds(10)), std::future_status::ready);
}

// The controls behind the gate are plain memory: the thread sanitizer sees a thread that reads them
// while they are destroyed.
TEST(ControlGate, KeepsItsControlsForTheThreadsInside) {
    ControlGate gate;
    std::vector<int> behind;
    std::atomic<bool> isDone = false;
    std::atomic<int> wrong = 0;
    const auto visit = [&] {
        while (!isDone) {
            const ControlGate::Pass pass(gate);
            if (pass && behind.at(99) != 7) {
                ++wrong;
            }
        }
    };
    std::thread one(visit);
    std::thread other(visit);
    for (int round = 0; round < 2000; ++round) {
        behind.assign(100, 7);
        gate.open();
        gate.close();
        behind.assign(100, 0);
        behind = {};
    }
    isDone = true;
    one.join();
    other.join();
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace zelvatone::test
