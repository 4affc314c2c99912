// Which of the waiting events a sample applies, and in what order the others go on waiting.
#include "engine/SynthEvent.h"
#include "tests/engine/RecordingEngine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <random>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace zelvatone {
namespace {

using test::Happening;
using test::RecordingEngine;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

// Queues note-offs of notes 0, 1, 2, ... with these offsets.
void queueOffsets(RecordingEngine& engine, const std::vector<std::int32_t>& offsets) {
    std::int32_t note = 0;
    for (const std::int32_t offset : offsets) {
        engine.queueNoteOff(note++, offset);
    }
}

std::vector<Happening> played(const std::vector<std::int32_t>& offsets, std::int32_t samples) {
    RecordingEngine engine;
    queueOffsets(engine, offsets);
    engine.renderSamples(samples);
    return engine.log;
}

// How many events each of the first samples applies when `count` are due at once.
std::vector<std::int32_t> appliedPerSample(std::int32_t count, std::int32_t samples) {
    RecordingEngine engine;
    queueOffsets(engine, std::vector<std::int32_t>(static_cast<std::size_t>(count), 0));
    std::vector<std::int32_t> applied;
    for (std::int32_t n = 0; n < samples; ++n) {
        const std::int32_t before = engine.events.available();
        engine.renderSamples(1);
        applied.push_back(before - engine.events.available());
    }
    return applied;
}

TEST(EventPass, DoesNothingWithoutEvents) {
    RecordingEngine engine;
    engine.renderSamples(3);
    EXPECT_THAT(engine.log, IsEmpty());
}

TEST(EventPass, AppliesOffsetsZeroAndOneAtOnceAndLaterOnesOneSampleEarly) {
    EXPECT_THAT(played({0}, 9), ElementsAre(Happening{0, "off 0"}));
    EXPECT_THAT(played({1}, 9), ElementsAre(Happening{0, "off 0"}));
    EXPECT_THAT(played({2}, 9), ElementsAre(Happening{1, "off 0"}));
    EXPECT_THAT(played({5}, 9), ElementsAre(Happening{4, "off 0"}));
}

TEST(EventPass, AppliesNegativeOffsetsAtOnce) {
    EXPECT_THAT(played({-1}, 9), ElementsAre(Happening{0, "off 0"}));
    EXPECT_THAT(played({-kHighest}, 9), ElementsAre(Happening{0, "off 0"}));
}

TEST(EventPass, WrapsTheLowestOffsetToTheLongestWait) {
    RecordingEngine engine;
    queueOffsets(engine, {kLowest});
    engine.renderSamples(1);
    EXPECT_THAT(engine.log, IsEmpty());
    EXPECT_THAT(engine.waitingCounters(), ElementsAre(kHighest));
}

TEST(EventPass, CountsHugeOffsetsDownOneByOne) {
    RecordingEngine engine;
    queueOffsets(engine, {kHighest});
    engine.renderSamples(1000);
    EXPECT_THAT(engine.log, IsEmpty());
    EXPECT_THAT(engine.waitingCounters(), ElementsAre(kHighest - 1000));
}

TEST(EventPass, AppliesHalfOfTheDueEntriesRoundedUp) {
    EXPECT_THAT(appliedPerSample(1, 2), ElementsAre(1, 0));
    EXPECT_THAT(appliedPerSample(2, 3), ElementsAre(1, 1, 0));
    EXPECT_THAT(appliedPerSample(3, 3), ElementsAre(2, 1, 0));
    EXPECT_THAT(appliedPerSample(5, 4), ElementsAre(3, 1, 1, 0));
    EXPECT_THAT(appliedPerSample(7, 5), ElementsAre(4, 2, 1, 0, 0));
}

TEST(EventPass, SpreadsAllNotesOffOverEightSamples) {
    EXPECT_THAT(appliedPerSample(128, 9), ElementsAre(64, 32, 16, 8, 4, 2, 1, 1, 0));
}

TEST(EventPass, AppliesDueEntriesInTheOrderOfTheirArrival) {
    EXPECT_THAT(played({0, 0, 0, 0}, 4), ElementsAre(Happening{0, "off 0"}, Happening{0, "off 1"},
                                                     Happening{1, "off 2"}, Happening{2, "off 3"}));
}

TEST(EventPass, KeepsWaitingEntriesInTheirOrderWhenNoneIsDue) {
    RecordingEngine engine;
    queueOffsets(engine, {9, 5, 7});
    engine.renderSamples(3);
    EXPECT_THAT(engine.waitingCounters(), ElementsAre(6, 2, 4));
}

TEST(EventPass, GoesOnAfterAnEntryThatItPutBack) {
    // Put back, applied: two taken and one left. The entry counts on without a gap.
    RecordingEngine engine;
    queueOffsets(engine, {4, 0});
    engine.renderSamples(1);
    EXPECT_THAT(engine.log, ElementsAre(Happening{0, "off 1"}));
    EXPECT_THAT(engine.waitingCounters(), ElementsAre(3));
}

TEST(EventPass, StopsBeforeAWaitingEntryAfterAnAppliedOne) {
    // Applied, one taken, one left: the waiting entry misses a count and comes a sample late.
    RecordingEngine engine;
    queueOffsets(engine, {0, 4});
    engine.renderSamples(1);
    EXPECT_THAT(engine.waitingCounters(), ElementsAre(4));
    engine.renderSamples(8);
    EXPECT_THAT(engine.log, ElementsAre(Happening{0, "off 0"}, Happening{4, "off 1"}));
}

TEST(EventPass, LeavesWhatItDidNotReachAheadOfWhatItPutBack) {
    // Four entries: one put back, two applied makes three taken and two left.
    RecordingEngine engine;
    queueOffsets(engine, {5, 0, 0, 7});
    engine.renderSamples(1);
    EXPECT_THAT(engine.log, ElementsAre(Happening{0, "off 1"}, Happening{0, "off 2"}));
    EXPECT_THAT(engine.waitingCounters(), ElementsAre(7, 4));
}

TEST(EventPass, LeavesDueEntriesThatItDidNotReachUntouched) {
    // Put back, applied, put back: three taken and three left, one of them due.
    RecordingEngine engine;
    queueOffsets(engine, {5, 0, 7, 0});
    engine.renderSamples(1);
    EXPECT_THAT(engine.log, ElementsAre(Happening{0, "off 1"}));
    EXPECT_THAT(engine.waitingCounters(), ElementsAre(0, 4, 6));
    engine.renderSamples(1); // applied, put back, two taken and two left
    EXPECT_THAT(engine.log, ElementsAre(Happening{0, "off 1"}, Happening{1, "off 3"}));
    EXPECT_THAT(engine.waitingCounters(), ElementsAre(6, 3));
}

TEST(EventPass, CarriesEntriesOverTheEndOfABlockWithoutRebasingThem) {
    RecordingEngine engine;
    queueOffsets(engine, {10});
    engine.renderSamples(4);
    EXPECT_THAT(engine.waitingCounters(), ElementsAre(6));
    engine.renderSamples(4);
    engine.renderSamples(4);
    EXPECT_THAT(engine.log, ElementsAre(Happening{9, "off 0"}));
}

TEST(EventPass, RunsOnlyForSamples) {
    RecordingEngine engine;
    queueOffsets(engine, {0, 3});
    engine.renderSamples(0);
    engine.renderSamples(-5);
    EXPECT_THAT(engine.log, IsEmpty());
    EXPECT_THAT(engine.waitingCounters(), ElementsAre(0, 3));
}

TEST(EventPass, KeepsAFullRingOfWaitingEntriesWhole) {
    RecordingEngine engine;
    std::vector<std::int32_t> offsets(256);
    std::generate(offsets.begin(), offsets.end(), [n = 500]() mutable { return n++; });
    queueOffsets(engine, offsets);
    engine.renderSamples(100);
    std::for_each(offsets.begin(), offsets.end(), [](std::int32_t& offset) { offset -= 100; });
    EXPECT_EQ(engine.waitingCounters(), offsets);
}

TEST(EventPass, AppliesAFullRingOfDueEntries) {
    EXPECT_THAT(appliedPerSample(256, 10), ElementsAre(128, 64, 32, 16, 8, 4, 2, 1, 1, 0));
}

TEST(FullRing, LosesTheEventThatFindsNoRoom) {
    RecordingEngine engine;
    queueOffsets(engine, std::vector<std::int32_t>(256, 0));
    {
        // An event that is lost is lost with its memory.
#if defined(__SANITIZE_ADDRESS__)
        const __lsan::ScopedDisabler lost;
#endif
        engine.queueNoteOn(60, 100, 0);
    }
    EXPECT_EQ(engine.events.available(), 256);
    engine.renderSamples(20);
    EXPECT_EQ(engine.log.size(), 256U);
    EXPECT_TRUE(std::none_of(engine.log.begin(), engine.log.end(),
                             [](const Happening& h) { return h.what.starts_with("on"); }));
}

// The same rule said without a queue: of N entries a pass takes the first r, r being the smallest
// number from 1 on for which r plus the due ones among them reaches N. Those that were due are
// gone, the others stand at the end with one count less.
struct Waiting {
    std::int32_t note;
    std::int32_t counter;
};

void modelPass(std::vector<Waiting>& list, std::int32_t sample, std::vector<Happening>& log) {
    std::size_t taken = 0;
    std::size_t due = 0;
    std::vector<Waiting> putBack;
    while (taken < list.size() && (taken == 0 || taken + due < list.size())) {
        const Waiting& entry = list[taken++];
        if (entry.counter <= 1) {
            ++due;
            log.push_back({sample, "off " + std::to_string(entry.note)});
        } else {
            putBack.push_back({entry.note, entry.counter - 1});
        }
    }
    list.erase(list.begin(), std::next(list.begin(), static_cast<std::ptrdiff_t>(taken)));
    list.insert(list.end(), putBack.begin(), putBack.end());
}

TEST(EventPass, AgreesWithAModelWithoutAQueueOnRandomCrowds) {
    std::mt19937 random(20240601); // NOLINT(bugprone-random-generator-seed): repeatable on purpose
    for (int round = 0; round < 300; ++round) {
        std::uniform_int_distribution<std::int32_t> offset(-2, 1 + round % 40);
        RecordingEngine engine;
        std::vector<std::int32_t> offsets(1 + random() % 60);
        std::generate(offsets.begin(), offsets.end(), [&] { return offset(random); });
        queueOffsets(engine, offsets);
        std::vector<Waiting> list;
        for (std::size_t i = 0; i < offsets.size(); ++i) {
            list.push_back({static_cast<std::int32_t>(i), offsets[i]});
        }
        std::vector<Happening> expected;
        for (std::int32_t sample = 0; sample < 120; ++sample) {
            modelPass(list, sample, expected);
        }
        engine.renderSamples(120);
        ASSERT_EQ(engine.log, expected) << "round " << round;
        ASSERT_EQ(expected.size(), offsets.size());
    }
}

} // namespace
} // namespace zelvatone
