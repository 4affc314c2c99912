// The audio path allocates three things and no others: a block's list of parameters, the events of
// MIDI messages, and a wave table whose size changes.
#include "tests/engine/CountingNew.h"
#include "tests/engine/EngineFixture.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace zelvatone {
namespace {

using test::AllocationCounts;
using test::allocationCounts;

class Allocation : public ::testing::Test {
protected:
    ZelvatoneEngine engine_;
    std::vector<float> left_ = std::vector<float>(4096);
    std::vector<float> right_ = std::vector<float>(4096);
    std::array<float*, 2> outputs_{left_.data(), right_.data()};

    template<class Action>
    static AllocationCounts during(Action action) {
        const AllocationCounts before = allocationCounts();
        action();
        return allocationCounts().since(before);
    }
    AllocationCounts duringBlock(std::int32_t frames) {
        return during([&] { engine_.render(nullptr, outputs_.data(), frames); });
    }
    void expectOneListCopy(std::int32_t frames) {
        const AllocationCounts counts = duringBlock(frames);
        EXPECT_EQ(counts.allocations, 1U) << frames;
        EXPECT_EQ(counts.releases, 1U) << frames;
        EXPECT_EQ(counts.lastSize, 23 * sizeof(void*)) << frames;
    }
};

TEST_F(Allocation, SilentBlockTakesOneListCopyWhateverItsSize) {
    for (const std::int32_t frames : {0, 1, 64, 4096}) {
        expectOneListCopy(frames);
    }
}

TEST_F(Allocation, BlockFullOfNotesTakesOneListCopyToo) {
    for (std::int32_t note = 30; note < 62; ++note) {
        engine_.noteOn(note, 127);
    }
    for (const std::int32_t frames : {1, 64, 512}) {
        expectOneListCopy(frames);
    }
}

TEST_F(Allocation, BlockTakesNoMoreWhileModesComeAndGoByTheHundred) {
    test::knob(engine_, kModeInit).setValue(0.0F);
    test::knob(engine_, kModeShift).setValue(3.0F);
    test::knob(engine_, kShiftInterval).setValue(-5.0F);
    test::knob(engine_, kMaxModes).setValue(100.0F);
    engine_.setTempo(100000.0F);
    engine_.noteOn(30, 127);
    expectOneListCopy(4096);
    EXPECT_EQ(engine_.voices[31]->targetCount, 100);
    test::knob(engine_, kModeShift).setValue(-3.0F);
    expectOneListCopy(4096);
}

TEST_F(Allocation, TableRebuiltAtTheSameSizeTakesNothing) {
    test::knob(engine_, kWave).setValue(3.0F);
    test::knob(engine_, kCrush).setValue(4.0F);
    expectOneListCopy(64);
    EXPECT_EQ(engine_.settings->waveKind, 3);
}

TEST_F(Allocation, MessageTakesItsEvents) {
    const auto eventsOf = [this](std::int32_t status, std::int32_t data1, std::int32_t data2) {
        return during([&] { engine_.processMidi(status, data1, data2, 0); }).allocations;
    };
    EXPECT_EQ(eventsOf(0x90, 60, 100), 1U);
    EXPECT_EQ(eventsOf(0x80, 60, 0), 1U);
    EXPECT_EQ(eventsOf(0xE0, 0, 0x40), 1U);
    EXPECT_EQ(eventsOf(0xB0, 123, 0), 128U);
    EXPECT_EQ(eventsOf(0xB0, 64, 127), 0U);
    EXPECT_EQ(eventsOf(0xC0, 1, 0), 0U);
}

TEST_F(Allocation, AppliedEventsAreGivenBackInTheBlock) {
    engine_.processMidi(0x90, 60, 100, 3);
    engine_.processMidi(0xE0, 0, 0x50, 9);
    engine_.processMidi(0x80, 60, 0, 20);
    const AllocationCounts counts = duringBlock(64);
    EXPECT_EQ(counts.allocations, 1U);
    EXPECT_EQ(counts.releases, 4U);
}

TEST_F(Allocation, WaitingEventsAreGivenBackWithTheEngineUnapplied) {
    bool applied = false;
    const std::function<void()> apply = [&applied] { applied = true; };
    const AllocationCounts counts = during([&] {
        auto doomed = std::make_unique<ZelvatoneEngine>();
        doomed->processMidi(0x90, 60, 100, 0);
        doomed->processMidi(0xB0, 123, 0, 0);
        doomed->events.write({0, new test::CallbackEvent(&apply)});
    });
    EXPECT_EQ(counts.allocations, counts.releases);
    EXPECT_FALSE(applied);
}

TEST_F(Allocation, EventThatAFullRingDoesNotTakeIsGivenBackAtOnce) {
    for (int i = 0; i < 2; ++i) {
        engine_.processMidi(0xB0, 123, 0, 0); // 128 events: two of these fill the ring
    }
    ASSERT_EQ(engine_.events.free(), 0);
    const AllocationCounts counts = during([&] {
        engine_.processMidi(0x90, 60, 100, 0);
        engine_.processMidi(0x80, 60, 0, 0);
        engine_.processMidi(0xE0, 0, 0x50, 0);
        engine_.processMidi(0xB0, 123, 0, 0);
    });
    EXPECT_EQ(counts.allocations, 131U);
    EXPECT_EQ(counts.releases, 131U);
    EXPECT_EQ(engine_.events.available(), 256);
}

TEST_F(Allocation, ProgramsGiveTheirMemoryBack) {
    const AllocationCounts counts = during([] {
        const SynthProgram source = makeDefaultProgram();
        SynthProgram target(3);
        target = source;
        const SynthProgram& itself = target;
        target = itself;
        const SynthProgram copy(target); // NOLINT(performance-unnecessary-copy-initialization)
    });
    EXPECT_EQ(counts.allocations, counts.releases);
}

} // namespace
} // namespace zelvatone
