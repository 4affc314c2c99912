// What stands ready when an engine is made, and what the host's dispatcher may do to it.
#include "tests/engine/EngineFixture.h"
#include "tests/engine/RecordingEngine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>

namespace zelvatone {
namespace {

using test::EngineTest;
using ::testing::Each;

class EngineConstruction : public EngineTest {};
class NoteFrequency : public EngineTest {};
class SampleRate : public EngineTest {};
class Chunks : public EngineTest {};

TEST_F(EngineConstruction, NamesTheInstrument) {
    EXPECT_EQ(engine_.numInputs, 0);
    EXPECT_EQ(engine_.numOutputs, 2);
    EXPECT_STREQ(engine_.effectName, "Zelvatone");
    EXPECT_STREQ(engine_.vendorName, "Quillfeather");
    EXPECT_STREQ(engine_.productName, "Zelvatone");
    EXPECT_EQ(engine_.vendorVersion, 1);
}

TEST_F(EngineConstruction, BeginsAtCdRateAnd120BeatsWithNothingSounding) {
    EXPECT_EQ(engine_.sampleRate, 44100.0F);
    EXPECT_EQ(engine_.tempo, 120.0F);
    EXPECT_THAT(engine_.stateWords, Each(0));
    EXPECT_EQ(engine_.voiceCount, 32);
    EXPECT_EQ(engine_.voiceNotes, std::vector<std::int32_t>(32, -1));
    EXPECT_EQ(engine_.events.available(), 0);
}

TEST_F(EngineConstruction, PlaysTheDefaultProgram) {
    ASSERT_FALSE(engine_.programs.empty());
    EXPECT_EQ(engine_.currentProgram, &engine_.programs.front());
    EXPECT_EQ(engine_.currentProgram->name, "Default");
    const SynthProgram table = makeDefaultProgram();
    ASSERT_EQ(engine_.currentProgram->parameters.size(), table.parameters.size());
    for (std::size_t i = 0; i < table.parameters.size(); ++i) {
        EXPECT_EQ(engine_.currentProgram->parameters[i]->name, table.parameters[i]->name);
        EXPECT_EQ(engine_.currentProgram->parameters[i]->value, table.parameters[i]->value);
    }
}

TEST_F(EngineConstruction, GivesTheVoiceSettingsTheirFirstValues) {
    const VoiceSettings& settings = *engine_.settings;
    EXPECT_EQ(settings.tableSize, 1024);
    EXPECT_EQ(settings.secondsPerSample, 2.2675736961451248e-5);
    EXPECT_EQ(settings.modeKind, 2);
    EXPECT_EQ(settings.initialModes, 10);
    EXPECT_EQ(settings.clusterOffsetHz, 0.0F);
    EXPECT_EQ(settings.clusterScale, 1.0F);
    EXPECT_EQ(settings.clusterWidthHz, 3000.0F);
    EXPECT_EQ(settings.shiftBeats, 0.5);
    EXPECT_EQ(settings.modeShift, 0);
    EXPECT_EQ(settings.minModes, 3);
    EXPECT_EQ(settings.maxModes, 20);
    EXPECT_EQ(settings.falloff, -1.0F);
    EXPECT_EQ(settings.waveKind, 0);
    EXPECT_EQ(settings.crushBits, 0);
    EXPECT_EQ(settings.bendRatio, 1.0);
}

TEST_F(EngineConstruction, GivesTheEnvelopeSettingsTheirFirstValues) {
    EXPECT_EQ(engine_.envelopeSettings->attack, 0.2);
    EXPECT_EQ(engine_.envelopeSettings->decay, 0.1);
    EXPECT_EQ(engine_.envelopeSettings->sustain, 0.7);
    EXPECT_EQ(engine_.envelopeSettings->release, 0.3);
}

TEST_F(EngineConstruction, BuildsTheSineOnA16ByteBoundary) {
    const float* table = engine_.settings->table.get();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(table) % 16, 0U);
    EXPECT_EQ(table[0], 0.0F);
    EXPECT_EQ(table[256], 1.0F);
    EXPECT_EQ(table[768], -1.0F);
}

TEST_F(EngineConstruction, GivesEverySlotAVoiceAndAnEnvelopeOnTheSharedSettings) {
    ASSERT_EQ(engine_.voices.size(), 32U);
    ASSERT_EQ(engine_.envelopes.size(), 32U);
    for (std::size_t slot = 0; slot < 32; ++slot) {
        EXPECT_EQ(engine_.voices[slot]->settings, engine_.settings.get());
        EXPECT_EQ(engine_.envelopes[slot]->settings, engine_.envelopeSettings.get());
        EXPECT_FALSE(engine_.envelopes[slot]->isActive());
    }
    EXPECT_EQ(engine_.shaper->order, 16);
}

TEST(SynthEngine, TakesIdentityAndSlotsFromItsKind) {
    const test::RecordingEngine engine;
    EXPECT_EQ(engine.numInputs, 3);
    EXPECT_EQ(engine.numOutputs, 5);
    EXPECT_STREQ(engine.effectName, "Recorder");
    EXPECT_STREQ(engine.vendorName, "Tests");
    EXPECT_STREQ(engine.productName, "Notebook");
    EXPECT_EQ(engine.vendorVersion, 7);
    EXPECT_EQ(engine.voiceNotes, std::vector<std::int32_t>(4, -1));
    EXPECT_EQ(engine.voiceCount, 4);
}

TEST_F(NoteFrequency, IsEqualTemperamentAroundA440ToTheLastBit) {
    for (std::int32_t note = 0; note < 128; ++note) {
        // The semitone's 13 digits and a running double product stay within 4e-11 of this.
        const auto expected = static_cast<float>(440.0 * std::exp2((note - 69) / 12.0));
        EXPECT_EQ(engine_.noteFrequency.at(static_cast<std::size_t>(note)), expected) << note;
    }
}

TEST_F(NoteFrequency, LiesWithinFloatRoundingOf440ForA4) {
    EXPECT_NEAR(engine_.noteFrequency[69], 440.0F, 3.06e-5F); // one float step at 440
    EXPECT_EQ(engine_.noteFrequency[0], 8.175798915636872F);
}

TEST_F(SampleRate, ReachesTheEngineAndTheVoicesAtOnce) {
    engine_.setSampleRate(48000.0F);
    EXPECT_EQ(engine_.sampleRate, 48000.0F);
    EXPECT_EQ(engine_.settings->secondsPerSample, 1.0 / 48000.0);
}

TEST_F(SampleRate, IsInvertedInDoublePrecision) {
    engine_.setSampleRate(22050.7F);
    EXPECT_EQ(engine_.settings->secondsPerSample, 1.0 / static_cast<double>(22050.7F));
}

TEST_F(SampleRate, IsOnlyStoredByTheBaseEngine) {
    test::RecordingEngine recorder;
    recorder.setSampleRate(96000.0F);
    EXPECT_EQ(recorder.sampleRate, 96000.0F);
}

TEST_F(SampleRate, HalvesTheSamplesOfAnAttackWhenItIsHalved) {
    set(kAttack, 1.0F);
    engine_.setSampleRate(1024.0F);
    engine_.noteOn(60, 127);
    render(256);
    EXPECT_EQ(envelope().level, 0.25);
    engine_.noteOn(60, 127);
    engine_.setSampleRate(512.0F);
    render(256);
    EXPECT_EQ(envelope(1).level, 0.5);
}

TEST_F(Chunks, AreNeitherGivenNorTaken) {
    int something = 0;
    for (const bool isPreset : {false, true}) {
        void* data = &something;
        EXPECT_EQ(engine_.getChunk(&data, isPreset), 0);
        EXPECT_EQ(data, nullptr);
        EXPECT_EQ(engine_.setChunk(&something, sizeof something, isPreset), 0);
        EXPECT_EQ(engine_.setChunk(nullptr, 0, isPreset), 0);
    }
    EXPECT_EQ(something, 0);
}

class ProgramChoice : public EngineTest {
protected:
    void SetUp() override {
        engine_.programs.push_back(makeDefaultProgram());
        engine_.programs.push_back(makeDefaultProgram());
        engine_.setProgram(0); // the list may have moved
    }
    std::int32_t count() const { return static_cast<std::int32_t>(engine_.programs.size()); }
};

TEST_F(ProgramChoice, ReachesEveryProgram) {
    for (std::int32_t i = count() - 1; i >= 0; --i) {
        engine_.setProgram(i);
        EXPECT_EQ(engine_.currentProgram, &engine_.programs[static_cast<std::size_t>(i)]);
    }
}

TEST_F(ProgramChoice, IgnoresNegativeIndicesAndThoseAboveTheCount) {
    engine_.setProgram(1);
    for (const std::int32_t index : {-1, INT32_MIN, count() + 1, count() + 100, INT32_MAX}) {
        engine_.setProgram(index);
        EXPECT_EQ(engine_.currentProgram, &engine_.programs[1]) << index;
    }
}

TEST_F(ProgramChoice, CopiesNothingSoThatEditsStayWithTheirProgram) {
    engine_.setProgram(1);
    set(kChop, 0.5F);
    engine_.setProgram(2);
    EXPECT_NE(test::knob(engine_, kChop).value, 0.5F);
    engine_.setProgram(1);
    EXPECT_EQ(test::knob(engine_, kChop).value, 0.5F);
}

using ProgramChoiceDeathTest = ProgramChoice;

TEST_F(ProgramChoiceDeathTest, EndsTheProcessAtTheCountItself) {
    EXPECT_DEATH(engine_.setProgram(count()), "");
}

} // namespace
} // namespace zelvatone
