// What is recorded renders to the same samples, in sessions as long as a musician's.
#include "tests/live/TakeSession.h"
#include "tests/support/Program.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstddef>
#include <cstdint>

namespace zelvatone {
namespace {

class LongRecording : public ::testing::TestWithParam<std::uint32_t> {};

TEST_P(LongRecording, RendersToTheSameSamples) {
    const std::uint32_t seed = GetParam();
    const SessionPlan plan{.rate = seed % 2 == 0 ? 48000 : 44100,
                           .blockSize = 64 << (seed % 4),
                           .seconds = 300.0,
                           .hasOddBlocks = seed % 3 == 0,
                           .seed = seed};
    const Song song = songWithoutEvents();
    const Take take = playAtRandom(TEST_INSTRUMENT, plan, song);
    ASSERT_GE(take.sound.size(), 2U * 300 * static_cast<std::size_t>(plan.rate));
    const auto again = renderAgain(TEST_INSTRUMENT, plan, take, song);
    ASSERT_EQ(take.sound.size(), again.size());
    bool isSilent = true;
    for (std::size_t i = 0; i < again.size(); ++i) {
        ASSERT_EQ(std::bit_cast<std::uint32_t>(take.sound[i]),
                  std::bit_cast<std::uint32_t>(again[i]))
            << "sample " << i;
        isSilent = isSilent && again[i] == 0.0F;
    }
    EXPECT_FALSE(isSilent);
}

INSTANTIATE_TEST_SUITE_P(RandomSessions, LongRecording,
                         ::testing::Range(std::uint32_t{100}, std::uint32_t{110}));

} // namespace
} // namespace zelvatone
