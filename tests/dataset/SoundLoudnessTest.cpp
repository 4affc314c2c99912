#include "dataset/SoundLoudness.h"

#include "host/audio/LoudnessMeter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace zelvatone {
namespace {

using Samples = std::vector<float>;

constexpr double kNone = -std::numeric_limits<double>::infinity();

std::array<double, 4> measured(const std::array<Samples, 4>& sounds, int sampleRate) {
    return soundLoudness({sounds[0], sounds[1], sounds[2], sounds[3]}, sampleRate);
}

double alone(const Samples& samples, int sampleRate) {
    return measured({samples, samples, samples, samples}, sampleRate)[0];
}

double byTheLibrary(const Samples& samples, int sampleRate) {
    LoudnessMeter meter(1, sampleRate);
    meter.measure(samples);
    return meter.integrated();
}

Samples sine(double hertz, int sampleRate, double seconds, double level = 1.0) {
    Samples samples(static_cast<std::size_t>(seconds * sampleRate));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double turns = hertz * static_cast<double>(i) / sampleRate;
        samples[i] = static_cast<float>(level * std::sin(2.0 * std::numbers::pi * turns));
    }
    return samples;
}

// Noise that fades, over an offset: loud and silent blocks, low and high frequencies.
Samples fadingNoise(int sampleRate, double seconds, double decibelsASecond, unsigned seed) {
    std::mt19937 random(seed);
    Samples samples(static_cast<std::size_t>(seconds * sampleRate));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double at = static_cast<double>(i) / sampleRate;
        const double noise = static_cast<double>(random()) * 0x1p-31 - 1.0;
        samples[i] = static_cast<float>(0.1 + noise * std::pow(10.0, -decibelsASecond * at / 20.0));
    }
    return samples;
}

// The recommendation's own calibration tone: -3.01 LKFS at full scale.
TEST(SoundLoudness, ReadsTheCalibrationTone) {
    EXPECT_NEAR(alone(sine(997.0, 48000, 2.0), 48000), -3.01, 0.02);
    EXPECT_NEAR(alone(sine(997.0, 44100, 2.0, 0.1), 44100), -23.01, 0.02);
}

TEST(SoundLoudness, IsThatOfTheLibrary) {
    for (const int rate : {8000, 44100, 48000, 96000, 192000}) {
        for (const double decibels : {0.0, 6.0, 30.0, 100.0}) {
            const Samples noise = fadingNoise(rate, 1.05, decibels, 5);
            EXPECT_NEAR(alone(noise, rate), byTheLibrary(noise, rate), 1e-6) << rate << decibels;
        }
        for (const double hertz : {20.0, 50.0, 200.0, 3500.0}) {
            const Samples tone = sine(hertz, rate, 0.6);
            EXPECT_NEAR(alone(tone, rate), byTheLibrary(tone, rate), 1e-6) << rate << hertz;
        }
    }
}

// To the bit: a sound's label does not depend on which others are measured with it.
TEST(SoundLoudness, OtherSoundsChangeNothing) {
    const std::array<Samples, 4> sounds{fadingNoise(44100, 1.0, 20.0, 1), sine(440.0, 44100, 1.0),
                                        Samples(44100), fadingNoise(44100, 1.0, 60.0, 2)};
    const std::array<double, 4> together = measured(sounds, 44100);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(together[i], alone(sounds[i], 44100)) << i;
        const auto turned = measured(
            {sounds[(i + 1) % 4], sounds[(i + 2) % 4], sounds[(i + 3) % 4], sounds[i]}, 44100);
        EXPECT_EQ(turned[3], together[i]) << i;
    }
}

TEST(SoundLoudness, SilenceAndLessThanABlockHaveNone) {
    EXPECT_EQ(alone(Samples(44100), 44100), kNone);
    EXPECT_EQ(alone(sine(997.0, 44100, 0.3999), 44100), kNone);
    EXPECT_GT(alone(sine(997.0, 44100, 0.4001), 44100), -4.0);
    EXPECT_EQ(alone(Samples(), 44100), kNone);
}

// Its traces in the filters, which long silence leaves, are not heard.
TEST(SoundLoudness, LongSilenceAfterwardsChangesNothing) {
    Samples tone = sine(997.0, 44100, 1.0);
    tone.resize(44100 * 2);
    const double before = alone(tone, 44100);
    tone.resize(44100 * 20);
    EXPECT_EQ(alone(tone, 44100), before);
}

} // namespace
} // namespace zelvatone
