// Blocks of audio from the linked library, and the tempo that the host tells.
#include "tests/plugin/LoadedPlugin.h"

#include <array>
#include <vector>

namespace {

constexpr VstInt32 kFrames = 4096;

class AudioBlock : public LoadedPluginTest {
protected:
    // What the second of two blocks sounds like with the host's time as given before each. Modes
    // come in by threes every 1/32 beat, so that the tempo is heard.
    StereoBlock secondBlock(const VstTimeInfo* first, const VstTimeInfo* second) {
        constexpr VstInt32 modeShift = 0;
        constexpr VstInt32 shiftInterval = 1;
        const LoadedPlugin fresh;
        fresh.setParameter(modeShift, 1.0F);
        fresh.setParameter(shiftInterval, 0.0F);
        host.setTime(first);
        fresh.render(16); // takes the tempo
        fresh.send({kNoteOn});
        host.setTime(second);
        return fresh.render(kFrames);
    }
};

TEST_F(AudioBlock, AsksForTheTempoOnceAndForNothingElse) {
    for (const VstInt32 frames : {1, 64, kFrames}) {
        host.calls.clear();
        plugin.render(frames);
        ASSERT_EQ(host.calls.size(), 1U) << frames;
        EXPECT_EQ(host.calls[0].effect, plugin.record);
        EXPECT_EQ(host.calls[0].opcode, 7); // audioMasterGetTime
        EXPECT_EQ(host.calls[0].value, 0x400);
    }
}

TEST_F(AudioBlock, AsksForTheTempoAgainForEveryBlock) {
    plugin.render(64);
    plugin.render(64);
    plugin.render(64);
    EXPECT_EQ(host.callsOf(audioMasterGetTime).size(), 3U);
}

TEST_F(AudioBlock, HearsTheTempo) {
    const VstTimeInfo slow = timeWithTempo(60.0);
    const VstTimeInfo fast = timeWithTempo(240.0);
    EXPECT_FALSE(secondBlock(&slow, &slow) == secondBlock(&fast, &fast));
    EXPECT_TRUE(secondBlock(&slow, &fast) == secondBlock(&fast, &fast));
}

TEST_F(AudioBlock, StartsAt120BeatsPerMinuteWithoutATime) {
    const VstTimeInfo usual = timeWithTempo(120.0);
    const VstTimeInfo fast = timeWithTempo(240.0);
    EXPECT_TRUE(secondBlock(nullptr, nullptr) == secondBlock(&usual, &usual));
    EXPECT_FALSE(secondBlock(nullptr, nullptr) == secondBlock(&fast, &fast));
}

TEST_F(AudioBlock, KeepsTheTempoWhenTheHostHasNoTimeLater) {
    const VstTimeInfo fast = timeWithTempo(240.0);
    EXPECT_TRUE(secondBlock(&fast, nullptr) == secondBlock(&fast, &fast));
}

TEST_F(AudioBlock, KeepsTheTempoWhenTheHostFlagsNone) {
    const VstTimeInfo fast = timeWithTempo(240.0);
    const VstTimeInfo unflagged = timeWithTempo(60.0, ~kVstTempoValid);
    EXPECT_TRUE(secondBlock(&fast, &unflagged) == secondBlock(&fast, &fast));
}

TEST_F(AudioBlock, FindsTheTempoFlagAmongOthers) {
    const VstTimeInfo fast = timeWithTempo(240.0);
    const VstTimeInfo allFlags = timeWithTempo(240.0, -1);
    EXPECT_TRUE(secondBlock(nullptr, &allFlags) == secondBlock(nullptr, &fast));
}

TEST_F(AudioBlock, ReplacesWhatIsInTheBuffers) {
    const LoadedPlugin other;
    plugin.send({kNoteOn});
    other.send({kNoteOn});
    EXPECT_TRUE(plugin.render(kFrames, 1000.0F) == other.render(kFrames, 0.0F));
}

TEST_F(AudioBlock, ReplacesTheBuffersWithSilenceWhenNothingSounds) {
    const StereoBlock block = plugin.render(kFrames, 1000.0F);
    EXPECT_EQ(block.left, std::vector<float>(kFrames, 0.0F));
    EXPECT_EQ(block.right, std::vector<float>(kFrames, 0.0F));
}

TEST_F(AudioBlock, WritesTheSameToBothOutputs) {
    plugin.send({kNoteOn});
    const StereoBlock block = plugin.render(kFrames);
    EXPECT_GT(block.peak(), 0.0F);
    EXPECT_EQ(block.left, block.right);
}

TEST_F(AudioBlock, NeverReadsTheInputs) {
    const LoadedPlugin other;
    plugin.send({kNoteOn});
    other.send({kNoteOn});
    std::vector<float> input(kFrames, 0.5F);
    std::array<float*, 2> inputs{input.data(), input.data()};
    StereoBlock block{std::vector<float>(kFrames), std::vector<float>(kFrames)};
    std::array<float*, 2> outputs{block.left.data(), block.right.data()};

    plugin.record->processReplacing(plugin.record, inputs.data(), outputs.data(), kFrames);

    EXPECT_TRUE(block == other.render(kFrames));
    EXPECT_EQ(input, std::vector<float>(kFrames, 0.5F));
}

TEST_F(AudioBlock, WritesNothingWhenItHasNoLength) {
    plugin.send({kNoteOn});
    std::array<float, 4> guard{9.0F, 9.0F, 9.0F, 9.0F};
    std::array<float*, 2> outputs{guard.data() + 1, guard.data() + 2};
    for (const VstInt32 frames : {0, -1, -4096}) {
        plugin.record->processReplacing(plugin.record, nullptr, outputs.data(), frames);
    }
    EXPECT_EQ(guard, (std::array<float, 4>{9.0F, 9.0F, 9.0F, 9.0F}));
}

TEST_F(AudioBlock, WritesNoFurtherThanItsEnd) {
    std::vector<float> left(65, 9.0F);
    std::vector<float> right(65, 9.0F);
    std::array<float*, 2> outputs{left.data(), right.data()};
    plugin.record->processReplacing(plugin.record, nullptr, outputs.data(), 64);
    EXPECT_EQ(left[63], 0.0F);
    EXPECT_EQ(left[64], 9.0F);
    EXPECT_EQ(right[64], 9.0F);
}

TEST_F(AudioBlock, MayBeLongerThanTheBlockSizeThatTheHostTold) {
    const LoadedPlugin other;
    plugin.ask(effSetBlockSize, 0, 16);
    plugin.send({kNoteOn});
    other.send({kNoteOn});
    EXPECT_TRUE(plugin.render(kFrames) == other.render(kFrames));
}

TEST_F(AudioBlock, IsLeftAsItIsByTheAccumulatingEntry) {
    const LoadedPlugin other;
    plugin.send({kNoteOn});
    other.send({kNoteOn});
    host.calls.clear();
    std::vector<float> buffer(kFrames, 0.25F);
    std::array<float*, 2> outputs{buffer.data(), buffer.data()};

    plugin.record->process(plugin.record, nullptr, outputs.data(), kFrames);

    EXPECT_EQ(buffer, std::vector<float>(kFrames, 0.25F));
    EXPECT_TRUE(host.calls.empty());
    EXPECT_TRUE(plugin.render(kFrames) == other.render(kFrames)); // the note still waits
}

TEST_F(AudioBlock, IsLeftAsItIsInDoublePrecision) {
    const LoadedPlugin other;
    plugin.send({kNoteOn});
    other.send({kNoteOn});
    host.calls.clear();
    std::vector<double> buffer(kFrames, 0.25);
    std::array<double*, 2> outputs{buffer.data(), buffer.data()};

    plugin.record->processDoubleReplacing(plugin.record, nullptr, outputs.data(), kFrames);

    EXPECT_EQ(buffer, std::vector<double>(kFrames, 0.25));
    EXPECT_TRUE(host.calls.empty());
    EXPECT_TRUE(plugin.render(kFrames) == other.render(kFrames));
}

} // namespace
