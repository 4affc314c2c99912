// A note is in tune: its frequency, measured from the sound.
#include "tests/voice/VoiceBench.h"

#include <numbers>
#include <vector>

namespace zelvatone {
namespace {

constexpr int kSampleRate = 44100;
// Bounds the drift of a phase kept as a float: below one cycle a sum rounds by up to 2^-22 radian,
// which is 44100 x 2^-22 / 2 pi = 0.0017 Hz if every rounding went the same way.
constexpr double kInTune = 0.01; // Hz

class Pitch : public VoiceBench {
protected:
    Pitch() {
        settings_.secondsPerSample = 1.0 / kSampleRate;
        settings_.initialModes = 1;
    }

    std::vector<float> second() {
        std::vector<float> out;
        out.reserve(kSampleRate);
        for (int n = 0; n < kSampleRate; ++n) {
            out.push_back(voice_.tick());
        }
        return out;
    }

    // Cycles a second, by adding up how far the phase of mode 0 turns at each of a second's
    // samples. No note here turns by half a cycle at once.
    double turnsInASecond() {
        double turns = 0.0;
        for (int n = 0; n < kSampleRate; ++n) {
            const double before = voice_.phase[0];
            voice_.tick();
            const double turn = (voice_.phase[0] - before) / (2.0 * std::numbers::pi);
            turns += turn - std::round(turn);
        }
        return turns;
    }
};

// Cycles a second between the first and the last upward crossing of zero. A crossing is found to
// within the width of a table entry, a tenth of a sample at 440 Hz.
double frequencyOf(const std::vector<float>& sound) {
    std::vector<double> crossings;
    for (std::size_t n = 1; n < sound.size(); ++n) {
        if (sound[n - 1] < 0.0F && sound[n] >= 0.0F) {
            const double rise = sound[n] - sound[n - 1];
            crossings.push_back(static_cast<double>(n) - sound[n] / rise);
        }
    }
    const double span = crossings.back() - crossings.front();
    return static_cast<double>(crossings.size() - 1) / span * kSampleRate;
}

TEST_F(Pitch, Is440HertzForA4ByItsZeroCrossings) {
    voice_.start(440.0F);
    EXPECT_NEAR(frequencyOf(second()), 440.0, kInTune);
}

TEST_F(Pitch, Is440HertzForA4ByItsPhase) {
    voice_.start(440.0F);
    EXPECT_NEAR(turnsInASecond(), 440.0, kInTune);
}

TEST_F(Pitch, IsTrueFromTheLowestToTheHighestKey) {
    for (const float frequency : {8.1757989F, 27.5F, 110.0F, 1760.0F, 4186.009F, 12543.854F}) {
        voice_.start(frequency);
        EXPECT_NEAR(turnsInASecond(), frequency, kInTune);
    }
}

TEST_F(Pitch, IsTheSameAtOtherSampleRates) {
    settings_.secondsPerSample = 1.0 / 96000.0;
    voice_.start(440.0F);
    // 44100 samples are then 0.459375 of a second, and the drift grows with the sample rate.
    EXPECT_NEAR(turnsInASecond() / 0.459375, 440.0, kInTune);
}

TEST_F(Pitch, IsTheMultipleForAHarmonic) {
    settings_.initialModes = 3;
    settings_.parity = 1.0F;
    voice_.start(440.0F);
    std::swap(voice_.phase[0], voice_.phase[2]);
    std::swap(voice_.freq[0], voice_.freq[2]);
    std::swap(voice_.targetFreq[0], voice_.targetFreq[2]);
    EXPECT_NEAR(turnsInASecond(), 1320.0, kInTune);
}

TEST_F(Pitch, GoesAnOctaveUpAndDownWithTheBend) {
    settings_.bendRatio = 2.0;
    voice_.start(440.0F);
    EXPECT_NEAR(turnsInASecond(), 880.0, kInTune);
    settings_.bendRatio = 0.5;
    EXPECT_NEAR(turnsInASecond(), 220.0, kInTune);
}

TEST_F(Pitch, IsKeptWhenChopStretchesPartOfTheWave) {
    settings_.chop = 0.5F;
    wave(2);
    voice_.start(440.0F);
    std::vector<float> sound = second();
    for (float& sample : sound) {
        sample += 0.25F; // the first half of a saw at gain 0.5 rises from -0.5 to 0
    }
    EXPECT_NEAR(frequencyOf(sound), 440.0, kInTune);
}

} // namespace
} // namespace zelvatone
