// The size of the host's blocks is not part of the sound.
#include "tests/engine/EngineFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace zelvatone {
namespace {

struct Message {
    std::int32_t sample; // before which it acts
    std::int32_t status, data1, data2;
};

// One message in each stretch of 4096 samples, the longest block here, and never two in a block of
// the other sizes: two that wait together may hold each other up by a sample. First and last
// samples of blocks of several sizes are among them.
constexpr std::array<Message, 7> kMessages{{{0, 0x90, 45, 127},
                                            {4096 + 777, 0x90, 64, 90},
                                            {2 * 4096 + 4095, 0xE0, 0, 0x50},
                                            {3 * 4096 + 1499, 0x90, 45, 33},
                                            {4 * 4096, 0x80, 64, 0},
                                            {5 * 4096 + 511, 0xE0, 3, 0x20},
                                            {6 * 4096 + 2000, 0x80, 45, 0}}};
constexpr std::int32_t kLength = 9 * 4096;

// Modes come and go all the time, glide, drop and peel.
void useLivelySound(SynthEngine& engine) {
    test::knob(engine, kModeShift).setValue(3.0F);
    test::knob(engine, kShiftInterval).setValue(-5.0F);
    test::knob(engine, kMaxModes).setValue(12.0F);
    test::knob(engine, kModeInit).setValue(4.0F);
    test::knob(engine, kModes).setValue(2.0F);
    test::knob(engine, kJitter).setValue(3.0F);
    test::knob(engine, kFreqDrop).setValue(-5.0F);
    test::knob(engine, kExitPeel).setValue(0.5F);
    test::knob(engine, kWave).setValue(3.0F);
    test::knob(engine, kCrush).setValue(6.0F);
    test::useEnvelope(engine, 0.05F, 0.1F, 0.8F, 0.2F);
}

std::vector<float> performed(std::int32_t blockSize) {
    ZelvatoneEngine engine;
    useLivelySound(engine);
    engine.setTempo(137.0F);
    std::vector<float> all;
    for (std::int32_t begin = 0; begin < kLength; begin += blockSize) {
        const std::int32_t frames = std::min(blockSize, kLength - begin);
        for (const Message& message : kMessages) {
            if (begin <= message.sample && message.sample < begin + frames) {
                // One more than the sample's place in the block: events act a sample early.
                engine.processMidi(message.status, message.data1, message.data2,
                                   message.sample - begin + 1);
            }
        }
        const std::vector<float> block = test::renderBlock(engine, frames);
        all.insert(all.end(), block.begin(), block.end());
    }
    return all;
}

class BlockSize : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(BlockSize, IsNotHeardWhenEventsActAtTheSameSamples) {
    static const std::vector<float> inOneBlock = performed(4096);
    ASSERT_NE(*std::max_element(inOneBlock.begin(), inOneBlock.end()), 0.0F);
    EXPECT_EQ(test::bitsOf(performed(GetParam())), test::bitsOf(inOneBlock));
}

INSTANTIATE_TEST_SUITE_P(, BlockSize, ::testing::Values(1, 64, 441, 512, 1000));

} // namespace
} // namespace zelvatone
