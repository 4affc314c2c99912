// A kernel's segment against as many ticks of the reference renderer, for every motion and every
// wrap.
#include "tests/kernel/Kernels.h"
#include "tests/kernel/Random.h"

#include "engine/WaveTable.h"
#include "engine/fast/VoiceRun.h"
#include "engine/fast/WaveCycle.h"

#include <array>
#include <cstring>
#include <numbers>

using namespace zelvatone;

namespace {

// What the modes of a segment are like.
struct Theme {
    const char* name;
    FrequencyMotion motion;
    Wrap wrap; // of most banks
    float lowestHz, highestHz;
    float lowestPhase;
};

constexpr std::array kThemes = {
    Theme{"still and near", FrequencyMotion::kStill, Wrap::kNear, 0.0F, 47000.0F, 0.0F},
    Theme{"still and far", FrequencyMotion::kStill, Wrap::kFar, 40000.0F, 9.0e5F, 0.0F},
    Theme{"still and very far", FrequencyMotion::kStill, Wrap::kFar, 1.0e6F, 9.0e7F, 0.0F},
    Theme{"still and near two turns", FrequencyMotion::kStill, Wrap::kAny, 95990.0F, 96010.0F,
          0.0F},
    Theme{"still with negative phases", FrequencyMotion::kStill, Wrap::kAny, 0.0F, 47000.0F,
          -6.28F},
    Theme{"still both ways", FrequencyMotion::kStill, Wrap::kAny, -2.0e5F, 2.0e5F, 0.0F},
    Theme{"gliding and near", FrequencyMotion::kGlide, Wrap::kNear, 5000.0F, 25000.0F, 0.0F},
    Theme{"gliding both ways", FrequencyMotion::kGlide, Wrap::kAny, -1.0e5F, 1.0e5F, 0.0F},
    Theme{"dropping and near", FrequencyMotion::kDrop, Wrap::kNear, 0.0F, 20000.0F, 0.0F},
    Theme{"dropping both ways", FrequencyMotion::kDrop, Wrap::kAny, -1.0e5F, 1.0e5F, 0.0F},
    Theme{"gliding and dropping", FrequencyMotion::kGlideAndDrop, Wrap::kAny, -1.0e4F, 1.0e5F,
          0.0F},
};

// Settings and everything derived from them, at 48 kHz and without shifts.
struct World {
    explicit World(float dropFactor) : cycle(&settings) {
        wavetable::build(settings, 1024);
        cycle.update();
        settings.secondsPerSample = 1.0 / 48000.0;
        settings.tempo = 120.0;
        settings.shiftBeats = 1.0e9;
        settings.dropFactor = dropFactor;
        dropFactors.fill(dropFactor);
        constants = {.radiansPerHz = static_cast<float>(2.0 * settings.secondsPerSample *
                                                        std::numbers::pi * settings.bendRatio),
                     .entriesPerRadian = cycle.entriesPerRadian(),
                     .cycle = cycle.middle(),
                     .dropFactors = dropFactors.data(),
                     .drops = dropFactor != 1.0F,
                     .dropsGliding = true,
                     .dropGrowth = dropFactor != 1.0F ? 2.0F : 1.0F};
    }

    VoiceSettings settings;
    WaveCycle cycle;
    std::array<float, kPaddedModes> dropFactors{};
    BlockConstants constants{};
};

float between(Random& random, float low, float high) {
    return low + random.fraction() * (high - low);
}

// Some modes arrive within the segment, some head away from their targets, some do not move.
float someStep(Random& random, float value, float target) {
    return random.oneIn(3) ? 0.0F : (target - value) * between(random, -0.01F, 0.05F);
}

void fill(ModeVoice& voice, const Theme& theme, Random& random) {
    const bool glides =
        theme.motion == FrequencyMotion::kGlide || theme.motion == FrequencyMotion::kGlideAndDrop;
    voice.activeCount = random.between(1, 100);
    for (std::int32_t i = 0; i < kMaxModeCount; ++i) {
        voice.phase[i] = between(random, theme.lowestPhase, 6.28F);
        voice.amp[i] = random.fraction();
        voice.targetAmp[i] = random.oneIn(2) ? voice.amp[i] : between(random, 0.01F, 1.0F);
        voice.ampStep[i] = someStep(random, voice.amp[i], voice.targetAmp[i]);
        voice.freq[i] = between(random, theme.lowestHz, theme.highestHz);
        voice.targetFreq[i] =
            glides ? between(random, theme.lowestHz, theme.highestHz) : voice.freq[i];
        voice.freqStep[i] = someStep(random, voice.freq[i], voice.targetFreq[i]);
    }
}

bool sameBits(const ModeArray& a, const ModeArray& b) {
    return std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
}

void expectSameBanks(const ModeVoice& expected, const ModeVoice& actual) {
    EXPECT_TRUE(sameBits(expected.amp, actual.amp));
    EXPECT_TRUE(sameBits(expected.ampStep, actual.ampStep));
    EXPECT_TRUE(sameBits(expected.freq, actual.freq));
    EXPECT_TRUE(sameBits(expected.freqStep, actual.freqStep));
    EXPECT_TRUE(sameBits(expected.phase, actual.phase));
}

class Segments : public EachKernel {
protected:
    // Answers whether the traits was the theme's.
    bool check(const Theme& theme) {
        const bool drops = theme.motion == FrequencyMotion::kDrop ||
                           theme.motion == FrequencyMotion::kGlideAndDrop;
        const World world(drops ? between(random_, 0.99F, 1.01F) : 1.0F);
        ModeVoice voice(&world.settings);
        fill(voice, theme, random_);
        const BankTraits traits = expectTicks(world, voice, random_.between(1, kRunSamples));
        return traits.motion == theme.motion && traits.wrap == theme.wrap;
    }

    // Renders `samples` samples of a voice like `actual` by ticks and of `actual` by the kernel;
    // answers the traits that the kernel had.
    BankTraits expectTicks(const World& world, ModeVoice actual, std::int32_t samples) {
        ModeVoice expected = actual;
        std::array<float, kRunSamples> expectedSamples{};
        for (std::int32_t k = 0; k < samples; ++k) {
            expectedSamples[k] = expected.tick();
        }

        alignas(64) std::array<float, kVoiceBuffer> actualSamples{};
        const ModeBank bank = bankOf(actual);
        const BankTraits traits = kernel().analyse(bank, world.constants, samples);
        const Segment segment{bank, actual.gain, actualSamples.data()};
        kernel().render(&segment, 1, samples, traits, world.constants, scratch_);

        EXPECT_EQ(std::memcmp(expectedSamples.data(), actualSamples.data(),
                              sizeof(float) * static_cast<std::size_t>(samples)),
                  0);
        expectSameBanks(expected, actual);
        return traits;
    }

    Random random_{1};
    KernelScratch scratch_;
};

TEST_P(Segments, AreAsManyTicksOfTheReferenceRenderer) {
    constexpr int kBanks = 60;
    for (const Theme& theme : kThemes) {
        int asExpected = 0;
        for (int i = 0; i < kBanks; ++i) {
            asExpected += check(theme);
        }
        ASSERT_FALSE(HasFailure()) << theme.name;
        EXPECT_GT(asExpected, kBanks / 2) << theme.name;
    }
}

// A glide adds -0 to a value that has arrived: +0 would turn -0 into +0.
TEST_P(Segments, KeepTheSignOfAZeroOnItsTarget) {
    const World world(1.0F);
    ModeVoice voice(&world.settings);
    voice.activeCount = 20;
    for (std::int32_t i = 0; i < 20; ++i) {
        voice.amp[i] = voice.targetAmp[i] = -0.0F;
        voice.freq[i] = voice.targetFreq[i] = -0.0F;
    }
    voice.amp[19] = 0.5F; // one mode that glides
    voice.targetAmp[19] = 1.0F;
    voice.ampStep[19] = 0.001F;
    voice.freq[19] = 100.0F;
    voice.targetFreq[19] = 200.0F;
    voice.freqStep[19] = 0.1F;
    const BankTraits traits = expectTicks(world, voice, kRunSamples);
    EXPECT_EQ(traits.motion, FrequencyMotion::kGlide);
    EXPECT_TRUE(traits.loudnessMoves);
}

ZELVATONE_FOR_EACH_KERNEL(Segments);

} // namespace
