// How voices and envelopes become one signal.
#include "tests/engine/EngineFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <vector>

namespace zelvatone {
namespace {

using test::EngineTest;

// One operation, rounded to single precision at once.
float once(double exact) {
    return static_cast<float>(exact);
}

double wide(float value) {
    return static_cast<double>(value);
}

class Mix : public EngineTest {
protected:
    // Sustain at full level after 882 samples, so that a note's weight is its velocity / 127.
    void SetUp() override {
        test::useSingleMode(engine_);
        test::useEnvelope(engine_, 0.01F, 0.01F, 1.0F, 0.01F);
    }

    // All on the same key from the same sample on: every voice gives the same sample.
    static std::vector<float> unison(const std::vector<std::int32_t>& velocities) {
        ZelvatoneEngine fresh;
        test::useSingleMode(fresh);
        test::useEnvelope(fresh, 0.01F, 0.01F, 1.0F, 0.01F);
        for (const std::int32_t velocity : velocities) {
            fresh.noteOn(69, velocity);
        }
        test::renderBlock(fresh, 900);
        return test::renderBlock(fresh, 200);
    }

    // A full-level note plays at a third of s; `factor` says how many of those thirds are heard.
    static void expectTimesOneNote(const std::vector<float>& mix, double factor) {
        const std::vector<float> one = unison({127});
        for (std::size_t n = 0; n < mix.size(); ++n) {
            ASSERT_NEAR(mix[n], factor * wide(one[n]), 2e-6) << n;
        }
    }
};

TEST_F(Mix, MakesAThirdOfOneNotesSampleTenDecibelsUp) {
    engine_.noteOn(69, 127);
    render(1000);
    ModeVoice twin = voice();
    for (const float y : render(100)) {
        ASSERT_NEAR(y, wide(twin.tick()) * 1.0 / 3.0 * 3.1622, 1e-6);
    }
}

TEST_F(Mix, AddsUpToThreeFullNotesAtAThirdEach) {
    expectTimesOneNote(unison({127, 127}), 2.0);
    expectTimesOneNote(unison({127, 127, 127}), 3.0);
}

TEST_F(Mix, WeighsNotesByTheirVelocities) {
    expectTimesOneNote(unison({64}), 64.0 / 127.0);
    expectTimesOneNote(unison({1, 100}), 101.0 / 127.0);
    expectTimesOneNote(unison({127, 90, 90, 73}), 380.0 / 127.0); // just below 3
}

TEST_F(Mix, KeepsTheLevelOfThreeNotesBeyondThem) {
    expectTimesOneNote(unison({127, 90, 90, 75}), 3.0); // just above 3
    expectTimesOneNote(unison({127, 127, 127, 127}), 3.0);
    expectTimesOneNote(unison(std::vector<std::int32_t>(32, 127)), 3.0);
}

TEST_F(Mix, SharesTheLevelByWeightAmongManyNotes) {
    // Three held keys against one more, an octave higher: 1 / weight each.
    for (const std::int32_t note : {60, 60, 60, 72}) {
        engine_.noteOn(note, 127);
    }
    render(1000);
    ModeVoice low = voice();
    ModeVoice high = voice(3);
    for (const float y : render(100)) {
        ASSERT_NEAR(y, (3.0 * wide(low.tick()) + wide(high.tick())) / 4.0 * 3.1622, 2e-6);
    }
}

TEST_F(Mix, CountsFadingNotesByTheirEnvelope) {
    for (int i = 0; i < 4; ++i) {
        engine_.noteOn(69, 127);
    }
    engine_.noteOn(81, 127);
    render(1000);
    engine_.noteOff(81);
    // Halfway through the fade of 441 samples: weight 4.5.
    render(219);
    ModeVoice held = voice();
    ModeVoice fading = voice(4);
    const double e = 1.0 - 220.0 / 441.0;
    const double expected =
        (4.0 * wide(held.tick()) + e * wide(fading.tick())) / (4.0 + e) * 3.1622;
    EXPECT_NEAR(render(1).front(), expected, 2e-6);
}

TEST_F(Mix, IsZeroAtZeroVelocity) {
    engine_.noteOn(69, 0);
    const std::vector<float> block = render(500);
    EXPECT_EQ(std::count(block.begin(), block.end(), 0.0F), 500);
    EXPECT_EQ(engine_.voiceNotes[31], 69);
}

// The mix done once more in double precision with a rounding after each operation, from copies of
// the engine's voices and envelopes: the order of slots and every rounding is part of the sound.
class MixTwin {
public:
    explicit MixTwin(const ZelvatoneEngine& engine)
        : notes_(engine.voiceNotes), rate_(engine.sampleRate) {
        for (std::size_t slot = 0; slot < notes_.size(); ++slot) {
            voices_.push_back(*engine.voices[slot]);
            envelopes_.push_back(*engine.envelopes[slot]);
        }
    }

    float sample() {
        float sum = 0.0F;
        float weight = 0.0F;
        for (std::size_t slot = 0; slot < notes_.size(); ++slot) {
            if (notes_[slot] == -1 || !envelopes_[slot].isActive()) {
                continue;
            }
            const float e = envelopes_[slot].tick(1.0 / wide(rate_));
            const float s = voices_[slot].tick();
            sum = once(wide(sum) + wide(once(wide(s) * wide(e))));
            weight = once(wide(weight) + wide(e));
        }
        const float gain = weight > 3.0F ? once(1.0 / wide(weight)) : 0.33333334F;
        return once(wide(once(wide(gain) * wide(sum))) * 3.1621999740600586);
    }

private:
    std::vector<std::int32_t> notes_;
    std::vector<ModeVoice> voices_;
    std::vector<ADSR> envelopes_;
    float rate_;
};

TEST_F(Mix, RoundsEveryStepInSlotOrderToTheLastBit) {
    set(kModeInit, 7.0F);
    set(kMaxModes, 20.0F);
    set(kSustain, 0.9F);
    engine_.setSampleRate(48000.0F);
    const std::vector<std::int32_t> notes = {33, 47, 52, 60, 61, 66, 73, 88};
    for (std::size_t i = 0; i < notes.size(); ++i) {
        render(131); // each note at another phase of its life
        engine_.noteOn(notes[i], 127 - 9 * static_cast<std::int32_t>(i));
    }
    engine_.noteOff(60);
    MixTwin twin(engine_);
    std::vector<float> expected(1000);
    // Read the block's settings into the shared records before the twin's first sample.
    engine_.render(nullptr, nullptr, 0);
    std::generate(expected.begin(), expected.end(), [&twin] { return twin.sample(); });
    EXPECT_EQ(test::bitsOf(render(1000)), test::bitsOf(expected));
}

} // namespace
} // namespace zelvatone
