// Sounds of which the measures are known by their formula.
#include "tour/Character.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>
#include <random>
#include <set>
#include <vector>

namespace zelvatone {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr double kRate = 44100.0;

// A note by its value at each second.
NoteMeasures measured(const std::function<double(double)>& value) {
    static const NoteMeter meter(kRate);
    std::vector<float> samples;
    for (int i = 0; i < 6 * static_cast<int>(kRate); ++i) {
        samples.push_back(static_cast<float>(0.3 * value(i / kRate)));
    }
    return meter.measure(samples);
}

double sine(double hz, double seconds) {
    return std::sin(2.0 * std::numbers::pi * hz * seconds);
}

// 1 while the key is held.
double key(double seconds) {
    return seconds < kHeldSeconds ? 1.0 : 0.0;
}

TEST(MeasuredNote, IsTheAThatIsHeldForThreeSecondsOfSix) {
    const Song note = measuredNote();
    ASSERT_EQ(note.events.size(), 2U);
    EXPECT_EQ(note.events[0].bytes[1], 57);
    EXPECT_EQ(note.events[1].seconds, 3.0);
    EXPECT_EQ(note.seconds, 6.0);
}

TEST(Silence, HasNoCharacter) {
    const NoteMeasures measures = measured([](double) { return 0.0; });
    EXPECT_TRUE(measures.isSilent);
    EXPECT_THAT(charactersOf(measures), IsEmpty());
    EXPECT_EQ(descriptionOf(measures), "Silent.");
}

TEST(HeldSine, IsPureMellowAndEndless) {
    const NoteMeasures measures = measured([](double t) { return sine(220.0, t) * key(t); });
    EXPECT_NEAR(measures.strongestHz, 220.0, 0.5);
    EXPECT_NEAR(measures.strongestShare, 1.0, 0.01);
    EXPECT_THAT(charactersOf(measures), ::testing::ElementsAre("endless", "mellow", "pure"));
    EXPECT_EQ(descriptionOf(measures), "Endless, mellow, pure. Strongest at 220 Hz.");
}

// exp(-t / T) falls by 20 dB in T ln 10: for 0.2 s, in 0.46 s; for 0.6 s, in 1.38 s.
TEST(ExponentialDecay, IsPluckedOrFading) {
    const auto decay = [](double time) {
        return measured([=](double t) { return sine(220.0, t) * std::exp(-t / time); });
    };
    EXPECT_NEAR(decay(0.2).fallSeconds, 0.46, 0.02);
    EXPECT_NEAR(decay(0.6).fallSeconds, 1.38, 0.02);
    EXPECT_THAT(charactersOf(decay(0.2)), Contains("plucked"));
    EXPECT_THAT(charactersOf(decay(0.2)), Not(Contains("fading")));
    EXPECT_THAT(charactersOf(decay(0.6)), Contains("fading"));
    EXPECT_THAT(charactersOf(decay(0.6)), Not(Contains("endless")));
}

// t / 2 is half of its largest value at one second.
TEST(SlowRise, IsSwelling) {
    const NoteMeasures measures =
        measured([](double t) { return sine(220.0, t) * std::min(t / 2.0, 1.0) * key(t); });
    EXPECT_NEAR(measures.riseSeconds, 1.0, 0.03);
    EXPECT_THAT(charactersOf(measures), Contains("swelling"));
}

// The level sinks by 8.69 dB in each time constant: of 5 s, by 4.3 dB until the last half second
// and by 5.2 dB until the release. The other 24.8 dB take 24.8 / 8.69 times 0.25 s.
TEST(StruckNoteThatRingsOn, IsABell) {
    const NoteMeasures measures = measured([](double t) {
        const double held = std::min(t, kHeldSeconds);
        return sine(440.0, t) * std::exp(-held / 5.0 - (t - held) / 0.25);
    });
    EXPECT_NEAR(measures.sunkDecibels, 4.3, 0.2);
    EXPECT_NEAR(measures.ringSeconds, 0.71, 0.03);
    EXPECT_THAT(charactersOf(measures), Contains("bell"));
    EXPECT_THAT(charactersOf(measures), Contains("ringing"));
}

// Shares of power are those of squared amplitudes: 4 to 1.
TEST(Character, KnowsBassAndBrightnessByTheirShareOfThePower) {
    const NoteMeasures bass =
        measured([](double t) { return (2.0 * sine(110.0, t) + sine(440.0, t)) / 3.0 * key(t); });
    EXPECT_NEAR(bass.lowShare, 0.8, 0.01);
    EXPECT_THAT(charactersOf(bass), Contains("bass"));
    const NoteMeasures bright =
        measured([](double t) { return (2.0 * sine(220.0, t) + sine(3300.0, t)) / 3.0 * key(t); });
    EXPECT_NEAR(bright.highShare, 0.2, 0.01);
    EXPECT_THAT(charactersOf(bright), Contains("bright"));
    EXPECT_THAT(charactersOf(bright), Not(Contains("bass")));
}

// The third partial of a square wave is a third of the first, -9.5 dB; it has no second.
TEST(SquareWave, IsHollowAndASawIsNot) {
    const auto series = [](int step) {
        return measured([=](double t) {
            double sum = 0.0;
            for (int partial = 1; partial < 12; partial += step) {
                sum += sine(220.0 * partial, t) / partial;
            }
            return sum * key(t);
        });
    };
    EXPECT_NEAR(series(2).thirdDecibels, -9.54, 0.1);
    EXPECT_LT(series(2).secondDecibels, -50.0);
    EXPECT_THAT(charactersOf(series(2)), Contains("hollow"));
    EXPECT_NEAR(series(1).secondDecibels, -6.02, 0.1);
    EXPECT_THAT(charactersOf(series(1)), Not(Contains("hollow")));
    EXPECT_THAT(charactersOf(series(1)), Not(Contains("metallic")));
}

// The second mode of a free bar lies at 2.756 times the first.
TEST(FreeBar, IsMetallic) {
    const NoteMeasures measures =
        measured([](double t) { return (sine(220.0, t) + 0.7 * sine(606.4, t)) / 1.7 * key(t); });
    EXPECT_NEAR(measures.metallicShare, 0.49 / 1.49, 0.03);
    EXPECT_THAT(charactersOf(measures), Contains("metallic"));
}

TEST(WhiteNoise, IsNoisy) {
    std::minstd_rand random(1); // NOLINT(cert-msc51-cpp): the same noise each time
    std::normal_distribution<double> normal(0.0, 0.3);
    const NoteMeasures measures = measured([&](double t) { return normal(random) * key(t); });
    EXPECT_LT(measures.tonalShare, 0.1);
    EXPECT_THAT(charactersOf(measures), Contains("noisy"));
    EXPECT_THAT(charactersOf(measures), Not(Contains("metallic")));
}

// 2^t rises by an octave a second; from a tenth to nine tenths of its moments by 2.3 octaves.
TEST(RisingTone, IsSweeping) {
    const NoteMeasures measures = measured([](double t) {
        const double turns = 220.0 * (std::exp2(t) - 1.0) / std::numbers::ln2;
        return std::sin(2.0 * std::numbers::pi * turns) * key(t);
    });
    EXPECT_NEAR(measures.sweepOctaves, 0.8 * 2.88, 0.1);
    EXPECT_THAT(charactersOf(measures), Contains("sweeping"));
}

// Two notes in turn, a pattern of two quarters of a second or two twentieths.
TEST(NotesInTurn, AreRhythmicOrFluttering) {
    const auto turns = [](double noteSeconds) {
        return measured([=](double t) {
            const bool isFirst = static_cast<int>(t / noteSeconds) % 2 == 0;
            return sine(isFirst ? 220.0 : 330.0, t) * key(t);
        });
    };
    // Each change counts, whichever note it leads to.
    EXPECT_NEAR(turns(0.25).pulsesPerSecond, 4.0, 0.2);
    EXPECT_THAT(charactersOf(turns(0.25)), Contains("rhythmic"));
    EXPECT_NEAR(turns(0.1).pulsesPerSecond, 10.0, 0.5);
    EXPECT_THAT(charactersOf(turns(0.1)), Contains("fluttering"));
    EXPECT_THAT(charactersOf(turns(0.1)), Not(Contains("rhythmic")));
}

TEST(CharacterTags, AreDifferentWordsWithARuleEach) {
    std::set<std::string_view> names;
    for (const CharacterTag& tag : characterTags()) {
        EXPECT_TRUE(names.insert(tag.name).second) << tag.name;
        EXPECT_EQ(tag.name.find_first_not_of("abcdefghijklmnopqrstuvwxyz"), tag.name.npos);
        EXPECT_GT(tag.rule.size(), 10U) << tag.name;
    }
}

} // namespace
} // namespace zelvatone
