#include "host/threads/ThreadTeam.h"

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <stdexcept>
#include <string>

namespace zelvatone {
namespace {

class ThreadTeamSizes : public ::testing::TestWithParam<int> {};

TEST_P(ThreadTeamSizes, DoEveryJobOnce) {
    ThreadTeam team(GetParam());
    for (const int count : {0, 1, 2, 100}) {
        std::vector<std::atomic<int>> done(static_cast<std::size_t>(count));
        team.run(count, [&](int job) { ++done[static_cast<std::size_t>(job)]; });
        for (const auto& times : done) {
            EXPECT_EQ(times, 1);
        }
    }
}

TEST_P(ThreadTeamSizes, ReturnWhenEveryJobIsDone) {
    ThreadTeam team(GetParam());
    std::atomic<int> done = 0;
    for (int round = 1; round <= 200; ++round) {
        team.run(3, [&](int) { ++done; });
        ASSERT_EQ(done, 3 * round);
    }
}

TEST_P(ThreadTeamSizes, RethrowTheExceptionOfAJob) {
    ThreadTeam team(GetParam());
    const auto failing = [](int job) {
        if (job == 2) {
            throw std::runtime_error("job 2");
        }
    };
    EXPECT_THROW(team.run(1000, failing), std::runtime_error);
    std::atomic<int> done = 0;
    team.run(5, [&](int) { ++done; }); // and go on
    EXPECT_EQ(done, 5);
}

INSTANTIATE_TEST_SUITE_P(, ThreadTeamSizes, ::testing::Values(1, 2, 3, 8));

TEST(ThreadTeam, BeginsNoJobAfterOneHasThrown) {
    ThreadTeam alone(1);
    int last = -1;
    const auto failing = [&](int job) {
        last = job;
        throw std::runtime_error("job");
    };
    EXPECT_THROW(alone.run(10, failing), std::runtime_error);
    EXPECT_EQ(last, 0);
}

TEST(ThreadTeam, WorksOnSeveralThreads) {
    ThreadTeam team(2);
    std::atomic<int> waiting = 0;
    // Each of the two jobs waits for the other: with one thread this would never end.
    team.run(2, [&](int) {
        ++waiting;
        while (waiting < 2) {
            std::this_thread::yield();
        }
    });
    EXPECT_EQ(waiting, 2);
}

} // namespace
} // namespace zelvatone
