// A note of one mode is a sine of known pitch and level: the whole engine against closed forms.
#include "tests/engine/EngineFixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdint>
#include <numbers>
#include <vector>

namespace zelvatone {
namespace {

using test::EngineTest;

constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr std::int32_t kRate = 44100;

// The level of a note on its own: gain of the voice, share of the mix, output gain.
constexpr double kNoteLevel = 0.5 / 3.0 * 3.1622;

// A phase is a float below 2 pi: each sample's two roundings (sum and wrap) move it by at most half
// a float step, 2.4e-7 radians, and the increment's own rounding by 1e-8.
constexpr double kPhaseDriftPerSample = 2.5e-7;

// Seconds 1 and 2 of the signal, each turned by `hertz`: their angle is how far it is off.
double offsetFrom(double hertz, const std::vector<float>& samples, double rate) {
    const auto second = static_cast<std::size_t>(rate);
    std::complex<double> sums[2];
    for (std::size_t n = 0; n < 2 * second; ++n) {
        const double angle = -kTwoPi * std::fmod(hertz * static_cast<double>(n) / rate, 1.0);
        sums[n / second] += static_cast<double>(samples[n]) * std::polar(1.0, angle);
    }
    return std::arg(sums[1] / sums[0]) / kTwoPi;
}

// Upward zero crossings: the pitch to the nearest hertz, so that the angle above has one meaning.
std::int32_t risingCrossings(const std::vector<float>& samples, std::size_t count) {
    std::int32_t crossings = 0;
    for (std::size_t n = 1; n < count; ++n) {
        crossings += samples[n - 1] < 0.0F && samples[n] >= 0.0F ? 1 : 0;
    }
    return crossings;
}

class SingleModeTone : public EngineTest {
protected:
    void SetUp() override {
        test::useSingleMode(engine_);
        test::useEnvelope(engine_, 0.01F, 0.01F, 0.7F, 0.01F);
    }

    double pitchOf(std::int32_t note, double nominal, float rate) {
        engine_.setSampleRate(rate);
        engine_.noteOn(note, 127);
        render(2000); // past attack and decay
        const std::vector<float> samples = render(static_cast<std::int32_t>(2.0F * rate));
        EXPECT_NEAR(risingCrossings(samples, static_cast<std::size_t>(rate)), nominal, 1.0);
        return nominal + offsetFrom(nominal, samples, static_cast<double>(rate));
    }
};

TEST_F(SingleModeTone, ReadsTheTableEntryBelowThePhaseAtSustain) {
    engine_.noteOn(69, 127);
    render(1000);
    const std::vector<float> samples = render(1500);
    int checked = 0;
    for (std::int32_t n = 1000; n < 2500; ++n) {
        // Exact in integers: cycles = 440 n / 44100, and the table has 1024 entries a cycle.
        const double entry = 1024.0 * (440 * n % kRate) / kRate;
        const double fraction = entry - std::floor(entry);
        // Left out: phases that the drift of 2500 samples (a tenth of an entry) may bring into
        // the neighbouring entry.
        const double drift = 2500 * kPhaseDriftPerSample * 1024.0 / kTwoPi;
        if (fraction < drift || fraction > 1.0 - drift) {
            continue;
        }
        const double sine = std::sin(kTwoPi * std::floor(entry) / 1024.0);
        ASSERT_NEAR(samples[static_cast<std::size_t>(n - 1000)], kNoteLevel * 0.7 * sine, 1e-6)
            << n;
        ++checked;
    }
    EXPECT_GT(checked, 1000);
}

TEST_F(SingleModeTone, FollowsSineAndEnvelopeFromKeyDownToSilence) {
    engine_.processMidi(0x90, 69, 127, 0);
    std::vector<float> samples = render(2000);
    engine_.processMidi(0x80, 69, 0, 0);
    const std::vector<float> tail = render(500);
    samples.insert(samples.end(), tail.begin(), tail.end());
    // One table entry, the drift, and single-precision rounding of the rest.
    const double bound = kNoteLevel * (kTwoPi / 1024.0 + 2500 * kPhaseDriftPerSample) + 1e-6;
    for (std::int32_t n = 0; n < 2500; ++n) {
        const double t = n < 2000 ? n + 1 : n - 1999; // samples since key down or up
        double e = 0.7;
        if (n >= 2000) {
            e = std::max(0.7 * (1.0 - t / 441.0), 0.0);
        } else if (t < 441) {
            e = t / 441.0;
        } else if (t < 882) {
            e = 1.0 - 0.3 * (t - 441.0) / 441.0;
        }
        const double sine = std::sin(kTwoPi * (440 * n % kRate) / kRate);
        ASSERT_NEAR(samples[static_cast<std::size_t>(n)], kNoteLevel * e * sine, bound) << n;
    }
}

TEST_F(SingleModeTone, IsAt440HertzForA4) {
    EXPECT_NEAR(pitchOf(69, 440.0, 44100.0F), 440.0, 0.1);
}

TEST_F(SingleModeTone, IsAt440HertzForA4AtAnotherSampleRate) {
    EXPECT_NEAR(pitchOf(69, 440.0, 48000.0F), 440.0, 0.1);
}

TEST_F(SingleModeTone, IsNineSemitonesBelowA4ForMiddleC) {
    EXPECT_NEAR(pitchOf(60, 261.6256, 44100.0F), 261.6256, 0.1);
}

TEST_F(SingleModeTone, IsAnOctaveLowerBentDownToTheBottom) {
    engine_.processMidi(0xE0, 0, 0, 0);
    EXPECT_NEAR(pitchOf(69, 220.0, 44100.0F), 220.0, 0.1);
}

TEST_F(SingleModeTone, IsATritoneHigherBentHalfwayUp) {
    engine_.processMidi(0xE0, 0, 0x60, 0);
    EXPECT_NEAR(pitchOf(69, 440.0 * std::numbers::sqrt2, 44100.0F), 622.2540, 0.1);
}

} // namespace
} // namespace zelvatone
