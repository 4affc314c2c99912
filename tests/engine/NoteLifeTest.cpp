// From key down to silence.
#include "tests/engine/EngineFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace zelvatone {
namespace {

using test::EngineTest;

constexpr std::int32_t kFree = -1;
constexpr std::int32_t kReleased = -2;

std::vector<std::uint32_t> zeroBits(std::size_t count) {
    std::vector<std::uint32_t> bits(count, 0U);
    return bits;
}

class NoteLife : public EngineTest {
protected:
    // Attack, decay and release of 441 samples; a square, so that no sample of a note is zero.
    void SetUp() override {
        set(kWave, 1.0F);
        test::useEnvelope(engine_, 0.01F, 0.01F, 0.5F, 0.01F);
    }
    // Down and up inside one event pass: of three due events the first two are applied.
    void tapInOnePass(std::int32_t note, std::int32_t velocity) {
        engine_.processMidi(0x90, note, velocity, 0);
        engine_.processMidi(0x80, note, 0, 0);
        engine_.processMidi(0xE0, 0, 0x40, 0);
    }
};

TEST_F(NoteLife, IsExactSilenceWithoutNotes) {
    EXPECT_EQ(test::bitsOf(render(1000)), zeroBits(1000));
}

TEST_F(NoteLife, IsSilenceWithoutNotesUnderBendsAndNoteOffsToo) {
    engine_.processMidi(0xE0, 0, 0, 10);
    engine_.processMidi(0x80, 60, 0, 20);
    engine_.processMidi(0xB0, 123, 0, 0);
    EXPECT_EQ(test::bitsOf(render(1000)), zeroBits(1000));
}

TEST_F(NoteLife, EndsInExactSilenceWithTheReleaseTime) {
    engine_.processMidi(0x90, 60, 127, 0);
    render(1000);
    engine_.processMidi(0x80, 60, 0, 0);
    const std::vector<float> tail = render(1000);
    // The 441st sample reaches the release time and is silent already.
    EXPECT_EQ(std::count(tail.begin(), tail.begin() + 440, 0.0F), 0);
    const std::vector<float> silence(tail.begin() + 440, tail.end());
    EXPECT_EQ(test::bitsOf(silence), zeroBits(560));
    EXPECT_EQ(engine_.voiceNotes[31], kFree);
}

TEST_F(NoteLife, BeginsOnItsFirstSampleWithTheFirstStepOfTheAttack) {
    test::useSingleMode(engine_);
    engine_.processMidi(0x90, 60, 127, 0);
    // Half of -1 from the square, at a 441st of full level, in the usual mix.
    EXPECT_NEAR(render(1).front(), -0.5 / 441.0 / 3.0 * 3.1622, 1e-7);
}

TEST_F(NoteLife, IsSilentForATapInOnePassOnAFreshSlot) {
    tapInOnePass(60, 127);
    EXPECT_EQ(test::bitsOf(render(441)), zeroBits(441));
    EXPECT_EQ(engine_.voiceNotes[31], kReleased);
    render(1);
    EXPECT_EQ(engine_.voiceNotes[31], kFree);
}

TEST_F(NoteLife, IsAFadeOfTheOldLevelForATapInOnePassOnAUsedSlot) {
    test::useSingleMode(engine_);
    engine_.processMidi(0x90, 40, 127, 0);
    render(1000);
    engine_.processMidi(0x80, 40, 0, 0);
    render(500);
    ASSERT_EQ(engine_.voiceNotes[31], kFree);
    tapInOnePass(69, 100);
    const std::vector<float> fade = render(500);
    // From the old note's sustain of one half, at the new note's pitch and velocity. The square
    // stays at -1 for the first half of a 100-sample cycle.
    for (std::size_t n = 0; n < 50; ++n) {
        const double e = 0.5 * (1.0 - static_cast<double>(n + 1) / 441.0) * 100.0 / 127.0;
        ASSERT_NEAR(fade[n], -0.5 * e / 3.0 * 3.1622, 1e-6) << n;
    }
    EXPECT_NE(fade[439], 0.0F);
    EXPECT_EQ(fade[440], 0.0F);
}

TEST_F(NoteLife, LastsOneSampleOfAttackForATap) {
    // Two due events: one in this pass, the other in the next.
    engine_.processMidi(0x90, 60, 127, 0);
    engine_.processMidi(0x80, 60, 0, 0);
    render(1);
    EXPECT_EQ(engine_.voiceNotes[31], 60);
    EXPECT_NEAR(envelope().level, 1.0 / 441.0, 1e-9);
    render(1);
    EXPECT_EQ(engine_.voiceNotes[31], kReleased);
    EXPECT_NEAR(envelope().level, 1.0 / 441.0, 1e-9);
}

TEST_F(NoteLife, StartsFromZeroPhaseOnAUsedSlot) {
    test::useSingleMode(engine_);
    engine_.noteOn(50, 127);
    render(777);
    engine_.noteOff(50);
    render(500);
    engine_.noteOn(62, 127);
    EXPECT_EQ(voice().phase[0], 0.0F);
    EXPECT_EQ(voice().time, 0.0F);
}

TEST_F(NoteLife, ChangesItsFadeWithTheReleaseKnob) {
    engine_.noteOn(60, 127);
    render(1000);
    engine_.noteOff(60);
    render(400);
    set(kRelease, 0.02F);
    render(481); // 881 of 882
    EXPECT_TRUE(envelope().isActive());
    render(1);
    EXPECT_FALSE(envelope().isActive());
}

TEST_F(NoteLife, KeepsItsVoiceStillOnceItIsOver) {
    engine_.noteOn(60, 127);
    engine_.noteOff(60);
    render(441);
    const float time = voice().time;
    render(100);
    EXPECT_EQ(voice().time, time);
}

TEST_F(NoteLife, BendsByPowersOfTwo) {
    engine_.pitchBend(-1.0F);
    EXPECT_EQ(engine_.settings->bendRatio, 0.5);
    engine_.pitchBend(0.0F);
    EXPECT_EQ(engine_.settings->bendRatio, 1.0);
    engine_.pitchBend(0.5F);
    EXPECT_EQ(engine_.settings->bendRatio, std::sqrt(2.0));
    engine_.processMidi(0xE0, 0x7F, 0x7F, 0);
    render(1);
    EXPECT_EQ(engine_.settings->bendRatio, std::exp2(8191.0 / 8192.0));
}

} // namespace
} // namespace zelvatone
