// What a block takes note of when it begins, and what it leaves for the next one.
#include "tests/engine/EngineFixture.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <vector>

namespace zelvatone {
namespace {

using test::bitsOf;
using test::EngineTest;

class RenderBlock : public EngineTest {
protected:
    // The same note on an engine that nothing happens to, for comparison.
    ZelvatoneEngine undisturbed_;

    void SetUp() override {
        engine_.noteOn(57, 127);
        undisturbed_.noteOn(57, 127);
    }
};

TEST_F(RenderBlock, WritesEverySampleOfBothChannelsAlike) {
    const std::vector<float> block = render(500);
    for (const float sample : block) {
        EXPECT_NE(sample, test::kUnwritten);
    }
    // renderBlock compares the channels.
}

TEST_F(RenderBlock, WritesNothingAfterItsEnd) {
    std::array<float, 8> left{};
    std::array<float, 8> right{};
    left.fill(test::kUnwritten);
    right.fill(test::kUnwritten);
    std::array<float*, 2> outputs{left.data(), right.data()};
    engine_.render(nullptr, outputs.data(), 5);
    EXPECT_NE(left[4], test::kUnwritten);
    EXPECT_EQ(left[5], test::kUnwritten);
    EXPECT_EQ(right[5], test::kUnwritten);
}

TEST_F(RenderBlock, NeverReadsItsInputs) {
    std::array<float*, 2> poisoned{reinterpret_cast<float*>(16), reinterpret_cast<float*>(16)};
    std::vector<float> left(64);
    std::vector<float> right(64);
    std::array<float*, 2> outputs{left.data(), right.data()};
    engine_.render(poisoned.data(), outputs.data(), 64);
    EXPECT_EQ(bitsOf(left), bitsOf(test::renderBlock(undisturbed_, 64)));
}

TEST_F(RenderBlock, ReadsTheParametersAndTheTempoEvenWithoutSamples) {
    set(kChop, 0.5F);
    set(kWave, 2.0F);
    set(kAttack, 1.0F);
    set(kReserved, 3.0F);
    engine_.setTempo(90.0F);
    for (const std::int32_t frames : {0, -1}) {
        engine_.settings->chop = 0.0F;
        engine_.render(nullptr, nullptr, frames);
        EXPECT_EQ(engine_.settings->chop, 0.5F);
    }
    EXPECT_EQ(engine_.settings->waveKind, 2);
    EXPECT_EQ(engine_.settings->tempo, 90.0);
    EXPECT_EQ(engine_.envelopeSettings->attack, 1.0);
    EXPECT_EQ(engine_.shaper->c[3], 0.25F);
    EXPECT_EQ(envelope().time, 0.0);
}

TEST_F(RenderBlock, TakesParametersAtItsStartAndNotInBetween) {
    at(10, [this] {
        set(kChop, 0.5F);
        set(kSustain, 0.0F);
        set(kAttack, 2.0F);
    });
    EXPECT_EQ(bitsOf(render(64)), bitsOf(test::renderBlock(undisturbed_, 64)));
    EXPECT_EQ(engine_.settings->chop, 1.0F);
    EXPECT_NE(bitsOf(render(64)), bitsOf(test::renderBlock(undisturbed_, 64)));
    EXPECT_EQ(engine_.settings->chop, 0.5F);
    EXPECT_EQ(engine_.envelopeSettings->attack, 2.0);
}

TEST_F(RenderBlock, TakesAnotherWaveAtItsStartAndNotInBetween) {
    at(10, [this] { set(kWave, 1.0F); });
    EXPECT_EQ(bitsOf(render(64)), bitsOf(test::renderBlock(undisturbed_, 64)));
    EXPECT_EQ(engine_.settings->waveKind, 0);
    EXPECT_EQ(engine_.settings->table[0], 0.0F);
    EXPECT_NE(bitsOf(render(64)), bitsOf(test::renderBlock(undisturbed_, 64)));
    EXPECT_EQ(engine_.settings->waveKind, 1);
    EXPECT_EQ(engine_.settings->table[0], -1.0F);
}

TEST_F(RenderBlock, TakesAnotherCrushAtItsStartAndNotInBetween) {
    at(10, [this] { set(kCrush, 1.0F); });
    EXPECT_EQ(bitsOf(render(64)), bitsOf(test::renderBlock(undisturbed_, 64)));
    EXPECT_EQ(engine_.settings->crushBits, 0);
    render(1);
    EXPECT_EQ(engine_.settings->crushBits, 1);
    EXPECT_EQ(engine_.settings->table[1], 1.0F);
    EXPECT_EQ(engine_.settings->table[1023], -1.0F);
}

TEST_F(RenderBlock, TakesTheTempoAtItsStartAndNotInBetween) {
    render(1);
    EXPECT_EQ(engine_.settings->tempo, 120.0);
    at(10, [this] { engine_.setTempo(133.7F); });
    render(64);
    EXPECT_EQ(engine_.tempo, 133.7F);
    EXPECT_EQ(engine_.settings->tempo, 120.0);
    render(1);
    EXPECT_EQ(engine_.settings->tempo, static_cast<double>(133.7F));
    render(1);
    EXPECT_EQ(engine_.settings->tempo, static_cast<double>(133.7F));
}

TEST_F(RenderBlock, PlaysTheProgramItBeganWith) {
    engine_.programs.push_back(makeDefaultProgram());
    engine_.setProgram(0);
    const auto added = static_cast<std::int32_t>(engine_.programs.size()) - 1;
    engine_.programs.back().parameters[kChop]->setValue(0.25F);
    at(10, [this, added] { engine_.setProgram(added); });
    EXPECT_EQ(bitsOf(render(64)), bitsOf(test::renderBlock(undisturbed_, 64)));
    render(1);
    EXPECT_EQ(engine_.settings->chop, 0.25F);
}

TEST_F(RenderBlock, TakesModeInitForTheNotesThatComeInIt) {
    set(kModeInit, 3.0F);
    engine_.noteOn(60, 127);
    EXPECT_EQ(voice(1).activeCount, 10); // the knob was not read yet
    engine_.processMidi(0x90, 60, 127, 0);
    render(1);
    EXPECT_EQ(voice(2).activeCount, 3);
}

TEST_F(RenderBlock, TakesAPitchBendInBetween) {
    test::useSingleMode(engine_);
    engine_.noteOn(69, 127);
    at(33, [this] { engine_.pitchBend(1.0F); });
    render(64);
    // 440 Hz for 32 samples and 880 Hz for the other 32.
    const double turned = (32 * 440.0 + 32 * 880.0) / 44100.0 * 6.283185307179586;
    EXPECT_NEAR(voice(1).phase[0], turned, 1e-4);
    EXPECT_EQ(voice(1).freq[0], 440.0F);
}

TEST_F(RenderBlock, SoundsTheSameWhateverReservedSays) {
    const std::vector<float> plain = test::renderBlock(undisturbed_, 2000);
    for (const float reserved : {0.0F, 1.0F, 2.0F, 3.0F, 4.0F}) {
        ZelvatoneEngine reservedEngine;
        test::knob(reservedEngine, kReserved).setValue(reserved);
        reservedEngine.noteOn(57, 127);
        EXPECT_EQ(bitsOf(test::renderBlock(reservedEngine, 2000)), bitsOf(plain));
        PolyShaper expected;
        expected.select(static_cast<std::int32_t>(reserved));
        EXPECT_EQ(reservedEngine.shaper->c, expected.c);
    }
}

TEST_F(RenderBlock, GoesBackToTheIdentityShaperWithReserved) {
    set(kReserved, 2.0F);
    render(1);
    EXPECT_EQ(engine_.shaper->c[10], 0.2F);
    set(kReserved, 0.0F);
    render(1);
    EXPECT_EQ(engine_.shaper->c[10], 0.0F);
    EXPECT_EQ(engine_.shaper->c[1], 1.0F);
}

using RenderBlockDeathTest = RenderBlock;

TEST_F(RenderBlockDeathTest, EndsTheProcessWhenAParameterIsMissing) {
    SynthProgram shortByOne(22);
    engine_.currentProgram = &shortByOne;
    EXPECT_DEATH(engine_.render(nullptr, nullptr, 0), "");
    SynthProgram empty(0);
    engine_.currentProgram = &empty;
    EXPECT_DEATH(engine_.render(nullptr, nullptr, 0), "");
}

} // namespace
} // namespace zelvatone
