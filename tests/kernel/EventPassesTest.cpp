// Many event passes at once against pass after pass.
#include "tests/kernel/EngineState.h"
#include "tests/kernel/Random.h"

#include "engine/fast/KernelChoice.h"

#include <gtest/gtest.h>

#include <array>

using namespace zelvatone;

namespace {

constexpr std::int32_t kController = 0xB0;
constexpr std::int32_t kAllNotesOff = 123;
constexpr std::int32_t kPitchBend = 0xE0;

// A bend of so many 128ths of an octave.
void queueBend(ZelvatoneEngine& engine, std::int32_t amount, std::int32_t offset) {
    engine.processMidi(kPitchBend, 0, 64 + amount, offset);
}

void render(ZelvatoneEngine& engine, std::int32_t samples) {
    std::array<float, 512> left{};
    std::array<float, 512> right{};
    std::array<float*, 2> outputs = {left.data(), right.data()};
    engine.render(nullptr, outputs.data(), samples);
}

TEST(EventPasses, CountDownTogetherUntilOneActs) {
    ZelvatoneEngine engine;
    queueBend(engine, 32, 100);
    render(engine, 99);
    EXPECT_EQ(engine.settings->bendRatio, 1.0); // due before the sample with the number 99
    render(engine, 1);
    EXPECT_GT(engine.settings->bendRatio, 1.0);
    EXPECT_EQ(engine.events.available(), 0);
}

// Of the 128 note-offs, 64 act in the first pass, then 32, 16, 8, 4, 2, 1 and the last one.
TEST(EventPasses, SpreadACrowdOverEightSamples) {
    ZelvatoneEngine engine;
    engine.processMidi(kController, kAllNotesOff, 0, 0);
    constexpr std::array left = {64, 32, 16, 8, 4, 2, 1, 0};
    for (const std::int32_t count : left) {
        render(engine, 1);
        EXPECT_EQ(engine.events.available(), count);
    }
}

TEST(EventPasses, KeepTheOrderAndCountersOfTheLiteralOnes) {
    Random random(13);
    for (int scenario = 0; scenario < 300; ++scenario) {
        ZelvatoneEngine literal(Renderer::kReference);
        ZelvatoneEngine fast;
        for (std::int32_t i = random.between(0, EventRing::kBufferSize); i > 0; --i) {
            const std::int32_t offset = random.oneIn(20)
                                            ? random.oneOf({INT32_MIN, INT32_MAX, -5, 0})
                                            : random.below(random.oneOf({3, 100, 2000}));
            queueBend(literal, i % 60, offset);
            queueBend(fast, i % 60, offset);
        }
        for (int block = 0; block < 5; ++block) {
            const std::int32_t samples = random.between(1, 500);
            render(literal, samples);
            render(fast, samples);
            ASSERT_EQ(differenceInState(literal, fast), "") << "scenario " << scenario;
        }
    }
}

} // namespace
