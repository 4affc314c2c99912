#include "tests/plugin/ShellTest.h"

#include <array>

namespace {

using ShellBlock = ShellTest;

TEST_F(ShellBlock, PassesBuffersAndLengthUnchanged) {
    std::array<float, 4> samples{};
    std::array<float*, 2> inputs{samples.data(), samples.data() + 1};
    std::array<float*, 2> outputs{samples.data() + 2, samples.data() + 3};
    effect.record->processReplacing(effect.record, inputs.data(), outputs.data(), -7);

    ASSERT_EQ(engine.renders.size(), 1U);
    EXPECT_EQ(engine.renders[0].inputs, inputs.data());
    EXPECT_EQ(engine.renders[0].outputs, outputs.data());
    EXPECT_EQ(engine.renders[0].frames, -7);
}

TEST_F(ShellBlock, NeitherClearsNorMixesTheBuffers) {
    EXPECT_EQ(effect.render(8, 3.0F).left, std::vector<float>(8, 3.0F));
}

TEST_F(ShellBlock, SetsTheTempoBeforeItRenders) {
    const VstTimeInfo time = timeWithTempo(97.25);
    host.setTime(&time);
    effect.render(8);
    EXPECT_EQ(engine.renders[0].tempo, 97.25F);
}

TEST_F(ShellBlock, RoundsTheTempoToSinglePrecision) {
    const VstTimeInfo time = timeWithTempo(100.1); // not a float; the nearest is 100.0999985
    host.setTime(&time);
    effect.render(8);
    EXPECT_EQ(engine.renders[0].tempo, 100.1F);
}

TEST_F(ShellBlock, KeepsTheLastTempoThatWasFlagged) {
    effect.render(8); // no time at all
    const VstTimeInfo flagged = timeWithTempo(90.0);
    host.setTime(&flagged);
    effect.render(8);
    const VstTimeInfo unflagged = timeWithTempo(60.0, ~kVstTempoValid);
    host.setTime(&unflagged);
    effect.render(8);
    host.setTime(nullptr);
    effect.render(8);

    ASSERT_EQ(engine.renders.size(), 4U);
    EXPECT_EQ(engine.renders[0].tempo, 120.0F);
    EXPECT_EQ(engine.renders[1].tempo, 90.0F);
    EXPECT_EQ(engine.renders[2].tempo, 90.0F);
    EXPECT_EQ(engine.renders[3].tempo, 90.0F);
}

TEST_F(ShellBlock, RendersNothingThroughTheEmptyEntries) {
    effect.record->process(effect.record, nullptr, nullptr, 64);
    effect.record->processDoubleReplacing(effect.record, nullptr, nullptr, 64);
    EXPECT_TRUE(engine.renders.empty());
    EXPECT_TRUE(host.calls.empty());
}

TEST_F(ShellBlock, TellsTheEngineTheSampleRate) {
    EXPECT_EQ(effect.ask(effSetSampleRate, 0, 0, nullptr, 96000.0F), 0);
    EXPECT_EQ(plugin->getSampleRate(), 96000.0F);
    EXPECT_EQ(engine.ratesGiven, std::vector<float>{96000.0F});
    EXPECT_EQ(engine.sampleRate, 96000.0F);
}

TEST_F(ShellBlock, KeepsTheBlockSizeToItself) {
    EXPECT_EQ(effect.ask(effSetBlockSize, 0, 4096), 0);
    EXPECT_EQ(plugin->getBlockSize(), 4096);
    EXPECT_TRUE(engine.renders.empty());
    EXPECT_TRUE(engine.ratesGiven.empty());
}

} // namespace
