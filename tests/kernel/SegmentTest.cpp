// A kernel's segment against as many ticks of the reference renderer, for every motion and every
// wrap.
#include "tests/kernel/Kernels.h"
#include "tests/kernel/PrintedLines.h"
#include "tests/kernel/Random.h"
#include "tests/kernel/SameBits.h"

#include "engine/WaveTable.h"
#include "engine/fast/BendLine.h"
#include "engine/fast/DropFactors.h"
#include "engine/fast/VoiceRun.h"
#include "engine/fast/WaveCycle.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <numbers>
#include <tuple>
#include <vector>

using namespace zelvatone;

namespace {

struct Range {
    float lowest, highest;
};

// Ordinary numbers, or some that are infinite, NaN or too large for any other wrap.
enum class Values { kOrdinary, kLarge, kBroken };

// What the modes of a segment are like.
struct Theme {
    const char* name;
    FrequencyMotion motion;
    Wrap wrap; // of most banks
    Range hz;
    Range targetHz; // where they move
    Range step;     // a sample, as a part of the way to the target
    float lowestPhase = 0.0F;
    float dropSpan = 0.0F; // the drop factor is up to this far from 1
    Values values = Values::kOrdinary;
};

using Motion = FrequencyMotion;

constexpr Range kSomeArrive = {-0.01F, 0.05F}; // within the segment
constexpr Range kNoneArrives = {-0.005F, 0.005F};
constexpr Range kNone = {0.0F, 0.0F};

constexpr std::array kThemes = {
    Theme{"still and near", Motion::kStill, Wrap::kNear, {0.0F, 47000.0F}, kNone, kNone},
    Theme{"still and far", Motion::kStill, Wrap::kFar, {40000.0F, 9.0e5F}, kNone, kNone},
    Theme{"still and very far", Motion::kStill, Wrap::kFar, {1.0e6F, 9.0e7F}, kNone, kNone},
    Theme{"still, close to two turns",
          Motion::kStill,
          Wrap::kAny,
          {95990.0F, 96010.0F},
          kNone,
          kNone},
    Theme{"still with negative phases",
          Motion::kStill,
          Wrap::kAny,
          {0.0F, 47000.0F},
          kNone,
          kNone,
          -6.28F},
    Theme{"still, either way", Motion::kStill, Wrap::kEither, {-47000.0F, 47000.0F}, kNone, kNone},
    Theme{"still, many turns either way",
          Motion::kStill,
          Wrap::kAny,
          {-2.0e5F, 2.0e5F},
          kNone,
          kNone},
    Theme{"underway and near",
          Motion::kUnderway,
          Wrap::kNear,
          {5000.0F, 9000.0F},
          {20000.0F, 25000.0F},
          kNoneArrives},
    Theme{"underway, either way",
          Motion::kUnderway,
          Wrap::kEither,
          {-9000.0F, 9000.0F},
          {20000.0F, 25000.0F},
          kNoneArrives},
    Theme{"underway, many turns",
          Motion::kUnderway,
          Wrap::kAny,
          {-9.0e4F, 9.0e4F},
          {2.0e5F, 2.5e5F},
          kNoneArrives},
    Theme{"underway, rising or falling",
          Motion::kUnderway,
          Wrap::kNear,
          {5000.0F, 9000.0F},
          {20000.0F, 25000.0F},
          kNoneArrives,
          0.0F,
          0.003F},
    Theme{"gliding and near",
          Motion::kGlide,
          Wrap::kNear,
          {5000.0F, 25000.0F},
          {5000.0F, 25000.0F},
          kSomeArrive},
    Theme{"gliding, either way",
          Motion::kGlide,
          Wrap::kEither,
          {-9000.0F, 9000.0F},
          {-9000.0F, 9000.0F},
          kSomeArrive},
    Theme{"gliding, many turns",
          Motion::kGlide,
          Wrap::kAny,
          {-1.0e5F, 1.0e5F},
          {-1.0e5F, 1.0e5F},
          kSomeArrive},
    Theme{"dropping and near",
          Motion::kUnderway,
          Wrap::kNear,
          {0.0F, 20000.0F},
          kNone,
          kNone,
          0.0F,
          0.01F},
    Theme{"dropping, many turns",
          Motion::kUnderway,
          Wrap::kAny,
          {-1.0e5F, 1.0e5F},
          kNone,
          kNone,
          0.0F,
          0.01F},
    Theme{"gliding and dropping",
          Motion::kGlideAndDrop,
          Wrap::kEither,
          {-5000.0F, 9000.0F},
          {-5000.0F, 9000.0F},
          kSomeArrive,
          0.0F,
          0.003F},
    Theme{"gliding and dropping, many turns",
          Motion::kGlideAndDrop,
          Wrap::kAny,
          {-1.0e4F, 1.0e5F},
          {-1.0e4F, 1.0e5F},
          kSomeArrive,
          0.0F,
          0.01F},
    Theme{"running away",
          Motion::kUnderway,
          Wrap::kExact,
          {1.0e4F, 9.0e4F},
          {1.0F, 2.0F},
          kNoneArrives,
          0.0F,
          0.004F,
          Values::kLarge},
    Theme{"coming back from far away",
          Motion::kGlideAndDrop,
          Wrap::kExact,
          {-9.0e4F, 9.0e4F},
          {-9000.0F, 9000.0F},
          kSomeArrive,
          0.0F,
          0.01F,
          Values::kLarge},
    Theme{"broken",
          Motion::kGlideAndDrop,
          Wrap::kExact,
          {-9000.0F, 9.0e4F},
          {-9000.0F, 9000.0F},
          kSomeArrive,
          0.0F,
          0.01F,
          Values::kBroken},
};

// Settings and everything derived from them, at 48 kHz and without shifts.
struct World {
    World(float dropFactor, std::int32_t dropModulus) : cycle(&settings) {
        wavetable::build(settings, 1024);
        cycle.update();
        settings.secondsPerSample = 1.0 / 48000.0;
        settings.tempo = 120.0;
        settings.shiftBeats = 1.0e9;
        settings.dropFactor = dropFactor;
        settings.dropModulus = dropModulus;
        dropFactors.update(dropFactor, dropModulus);
        ratios.fill(1.0);
        bend.hold(radiansPerHz(1.0));
        constants.phaseAdvance = &bend.phaseAdvance();
        constants.entriesPerRadian = cycle.entriesPerRadian();
        constants.cycle = cycle.middle();
        constants.indexLimit = cycle.indexLimit();
        constants.silentEntry = cycle.silentEntry();
        dropFactors.describe(constants);
    }

    World(const World&) = delete;
    World& operator=(const World&) = delete;

    // Bends the pitch from `sample` of the run on, 1..kRunSamples - 1.
    void bendAt(std::int32_t sample, double ratio) {
        std::fill(ratios.begin() + sample, ratios.end(), ratio);
        bend.bend(sample, radiansPerHz(ratio));
    }
    float radiansPerHz(double bendRatio) const {
        return static_cast<float>(2.0 * settings.secondsPerSample * std::numbers::pi * bendRatio);
    }

    VoiceSettings settings;
    WaveCycle cycle;
    std::array<double, kRunSamples> ratios{}; // of the bend, by sample of the run
    BendLine bend;
    DropFactors dropFactors;
    BlockConstants constants{};
};

float between(Random& random, Range range) {
    return range.lowest + random.fraction() * (range.highest - range.lowest);
}

float someFrequency(Random& random, const Theme& theme) {
    const float hz = between(random, theme.hz);
    return theme.values == Values::kLarge ? std::ldexp(hz, random.below(105)) : hz;
}

float brokenValue(Random& random) {
    return random.oneOf({std::numeric_limits<float>::infinity(),
                         -std::numeric_limits<float>::infinity(),
                         std::numeric_limits<float>::quiet_NaN(), 3.0e38F, -3.0e38F, 1.0e-42F});
}

// Any of the four values of a mode's frequency.
void breakMode(ModeVoice& voice, std::int32_t i, Random& random) {
    ModeArray& array = *random.oneOf(
        {&voice.phase, &voice.phase, &voice.freq, &voice.freqStep, &voice.targetFreq});
    array[i] = brokenValue(random);
}

void fill(ModeVoice& voice, const Theme& theme, Random& random) {
    voice.activeCount = random.between(1, 100);
    const bool allDead = theme.values == Values::kBroken && random.oneIn(2);
    for (std::int32_t i = 0; i < kMaxModeCount; ++i) {
        voice.phase[i] = between(random, {theme.lowestPhase, 6.28F});
        voice.amp[i] = random.fraction();
        voice.targetAmp[i] = random.oneIn(2) ? voice.amp[i] : between(random, {0.01F, 1.0F});
        voice.ampStep[i] = (voice.targetAmp[i] - voice.amp[i]) * between(random, kSomeArrive);
        voice.freq[i] = someFrequency(random, theme);
        const bool moves = theme.targetHz.highest != 0.0F;
        voice.targetFreq[i] = moves ? between(random, theme.targetHz) : voice.freq[i];
        voice.freqStep[i] =
            random.oneIn(3) ? 0.0F
                            : (voice.targetFreq[i] - voice.freq[i]) * between(random, theme.step);
        if (theme.values == Values::kBroken && random.oneIn(2)) {
            breakMode(voice, i, random);
        }
        if (allDead) {
            voice.phase[i] = std::numeric_limits<float>::quiet_NaN();
        }
        if (random.oneIn(2) || allDead) {
            voice.reportedModes.set(i);
        }
    }
}

bool sameArrays(const ModeArray& a, const ModeArray& b) {
    return std::equal(a.begin(), a.end(), b.begin(),
                      [](float x, float y) { return sameBits(x, y); });
}

void expectSameBanks(const ModeVoice& expected, const ModeVoice& actual) {
    EXPECT_TRUE(sameArrays(expected.amp, actual.amp));
    EXPECT_TRUE(sameArrays(expected.ampStep, actual.ampStep));
    EXPECT_TRUE(sameArrays(expected.freq, actual.freq));
    EXPECT_TRUE(sameArrays(expected.freqStep, actual.freqStep));
    EXPECT_TRUE(sameArrays(expected.phase, actual.phase));
    EXPECT_EQ(expected.reportedModes.words, actual.reportedModes.words);
}

bool sameTraits(const BankTraits& a, const BankTraits& b) {
    return a.loudnessMoves == b.loudnessMoves && a.motion == b.motion && a.wrap == b.wrap;
}

class Segments : public EachKernel {
protected:
    // Returns whether the traits were the theme's.
    bool check(const Theme& theme) {
        World world = makeWorld(theme);
        ModeVoice voice(&world.settings);
        fill(voice, theme, random_);
        const BankTraits traits = expectTicks(world, voice, 0, random_.between(1, kRunSamples));
        return traits.motion == theme.motion && traits.wrap == theme.wrap;
    }

    // The same in a part of a run in which the pitch bends up and down.
    void checkBent(const Theme& theme) {
        World world = makeWorld(theme);
        for (std::int32_t sample = random_.between(1, 8); sample < kRunSamples;
             sample += random_.between(1, 20)) {
            world.bendAt(sample, 0.5 + 1.5 * double{random_.fraction()});
        }
        ModeVoice voice(&world.settings);
        fill(voice, theme, random_);
        const std::int32_t first = random_.below(kRunSamples);
        const BankTraits traits =
            expectTicks(world, voice, first, random_.between(1, kRunSamples - first));
        EXPECT_NE(traits.motion, Motion::kStill);
    }

    World makeWorld(const Theme& theme) {
        const float drop = between(random_, {-theme.dropSpan, theme.dropSpan});
        return {1.0F + drop, random_.between(1, 3)};
    }

    // Renders `samples` samples, from sample `first` of a run on, of a voice like `actual` by ticks
    // and of `actual` by the kernel; returns the traits that the kernel found.
    BankTraits expectTicks(World& world, ModeVoice actual, std::int32_t first,
                           std::int32_t samples) {
        ModeVoice expected = actual;
        std::array<float, kRunSamples> expectedSamples{};
        for (std::int32_t k = 0; k < samples; ++k) {
            world.settings.bendRatio = world.ratios[first + k];
            expectedSamples[k] = expected.tick();
        }
        const std::string expectedLines = printed_.take();

        std::array<float, kVoiceBuffer> actualSamples{};
        const Segment segment = segmentOf({actual, 0, actualSamples.data()}, first);
        const BankTraits traits = kernel().analyse(segment.modes, world.constants, samples);
        kernel().render(&segment, 1, samples, traits, world.constants, scratch_);

        EXPECT_EQ(std::memcmp(expectedSamples.data(), segment.out,
                              sizeof(float) * static_cast<std::size_t>(samples)),
                  0);
        expectSameBanks(expected, actual);
        EXPECT_TRUE(takeFailures(world) == expectedLines); // they may be too many to print
        return traits;
    }

    // Renders up to nine small voices as one batch, those of them that have the first one's traits,
    // and compares each with its ticks.
    void checkBatch(const Theme& theme) {
        constexpr std::int32_t kMostVoices = 9;
        constexpr std::int32_t kMostModes = 12; // nine such voices fill 108 lanes
        static_assert(kMostVoices * kMostModes <= kBatchLanes);
        World world = makeWorld(theme);
        std::vector<ModeVoice> voices;
        std::array<std::array<float, kVoiceBuffer>, kMostVoices> samples{};
        std::vector<Segment> segments;
        BankTraits traits{};
        voices.reserve(kMostVoices); // segments point to them
        for (std::int32_t i = random_.between(2, kMostVoices); i > 0; --i) {
            ModeVoice& voice = voices.emplace_back(&world.settings);
            fill(voice, theme, random_);
            voice.activeCount = random_.between(0, kMostModes);
            const BankTraits own = kernel().analyse(bankOf(voice), world.constants, kRunSamples);
            if (segments.empty()) {
                traits = own;
            }
            if (!sameTraits(own, traits)) {
                voices.pop_back();
                continue;
            }
            const auto slot = static_cast<std::int32_t>(segments.size());
            segments.push_back(segmentOf({voice, slot, samples[slot].data()}, 0));
        }
        const std::vector<ModeVoice> before = voices;
        kernel().render(segments.data(), static_cast<std::int32_t>(segments.size()), kRunSamples,
                        traits, world.constants, scratch_);
        const std::string actualLines = takeFailures(world);
        for (std::size_t i = 0; i < voices.size(); ++i) {
            ModeVoice expected = before[i];
            for (std::int32_t k = 0; k < kRunSamples; ++k) {
                ASSERT_TRUE(sameBits(expected.tick(), samples[i][k])) << theme.name << " " << k;
            }
            expectSameBanks(expected, voices[i]);
        }
        EXPECT_TRUE(actualLines == printed_.take());
    }

    // The lines for what the kernel has collected, voice by voice.
    std::string takeFailures(const World& world) {
        FailedLookups& failures = scratch_.failures;
        std::sort(failures.list, failures.list + failures.count,
                  [](const FailedLookup& a, const FailedLookup& b) {
                      return std::tie(a.slot, a.sample, a.mode) <
                             std::tie(b.slot, b.sample, b.mode);
                  });
        for (std::int32_t i = 0; i < failures.count; ++i) {
            wavetable::printFailedLookup(wavetable::Readout(world.settings),
                                         failures.list[i].phase);
        }
        failures.count = 0;
        return printed_.take();
    }

    Random random_{1};
    KernelScratch scratch_;
    PrintedLines printed_;
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

TEST_P(Segments, FollowTheBendFromSampleToSample) {
    constexpr int kBanks = 60;
    for (const Theme& theme : kThemes) {
        for (int i = 0; i < kBanks; ++i) {
            checkBent(theme);
        }
        ASSERT_FALSE(HasFailure()) << theme.name;
    }
}

TEST_P(Segments, AreAsManyTicksInVoicesThatShareVectors) {
    constexpr int kBatches = 40;
    for (const Theme& theme : kThemes) {
        for (int i = 0; i < kBatches && !HasFailure(); ++i) {
            checkBatch(theme);
        }
        ASSERT_FALSE(HasFailure()) << theme.name;
    }
}

// A glide adds -0 to a value that has arrived: +0 would turn -0 into +0.
TEST_P(Segments, KeepTheSignOfAZeroOnItsTarget) {
    World world(1.0F, 1);
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
    for (const float step : {0.1F, 2.0F}) {
        voice.freqStep[19] = step;
        const BankTraits traits = expectTicks(world, voice, 0, kRunSamples);
        EXPECT_EQ(traits.motion, step < 1.0F ? Motion::kUnderway : Motion::kGlide);
        EXPECT_TRUE(traits.loudnessMoves);
    }
}

// The glide puts the mode on its target and the drop takes it back to where it was: nothing has
// changed but the step, and from then on the drop goes on.
TEST_P(Segments, KeepDroppingADeadModeWhoseGlideEndsWhereItBegan) {
    World world(0.999F, 2); // takes modes of odd numbers once they do not glide
    ModeVoice voice(&world.settings);
    voice.activeCount = 2;
    for (std::int32_t i = 0; i < 2; ++i) {
        voice.phase[i] = std::numeric_limits<float>::quiet_NaN();
        voice.amp[i] = voice.targetAmp[i] = 0.5F;
        voice.reportedModes.set(i);
    }
    voice.targetFreq[1] = 100.0F;
    voice.freq[1] = 100.0F * 0.999F;
    voice.freqStep[1] = 1.0F; // past the target
    expectTicks(world, voice, 0, kRunSamples);
}

ZELVATONE_FOR_EACH_KERNEL(Segments);

} // namespace
