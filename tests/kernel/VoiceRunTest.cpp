// Where the next change of a voice's modes is found.
#include "engine/fast/VoiceRun.h"

#include "tests/kernel/Random.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace zelvatone;

namespace {

// The slow way: one sample after the other.
std::int32_t samplesUntilShiftByCounting(const ModeVoice& voice, std::int32_t samples) {
    float time = voice.time;
    for (std::int32_t k = 0; k < samples; ++k) {
        if (voice.shiftIsDue(time)) {
            return k;
        }
        time = static_cast<float>(time + voice.settings->secondsPerSample);
    }
    return samples;
}

// Follows `voice` through many runs; returns how many shifts were due on the way.
int expectShiftsLikeCounting(ModeVoice voice) {
    int shifts = 0;
    for (int run = 0; run < 200; ++run) {
        // The distance that is found may end a segment early, but never late.
        std::int32_t done = 0;
        while (done < kRunSamples) {
            const std::int32_t left = kRunSamples - done;
            const std::int32_t found = samplesBeforeChange(voice, left);
            EXPECT_LE(found, samplesUntilShiftByCounting(voice, left));
            shifts += voice.shiftIsDue(voice.time);
            advanceClock(voice, std::max(found, 1));
            done += std::max(found, 1);
        }
    }
    return shifts;
}

class ShiftSearch : public testing::Test {
protected:
    VoiceSettings settings_;
    ModeVoice voice_{&settings_};
};

TEST_F(ShiftSearch, NeverPassesAShift) {
    Random random(11);
    int shifts = 0;
    for (int i = 0; i < 300 && !HasFailure(); ++i) {
        settings_.secondsPerSample = 1.0 / random.oneOf({22050.0, 44100.0, 48000.0, 192000.0});
        settings_.tempo =
            static_cast<double>(random.oneOf({60.0F, 120.0F, 133.7F, 5000.0F, 1.0e6F}));
        settings_.shiftBeats = std::ldexp(1.0, random.between(-5, 1));
        voice_.time = std::ldexp(random.fraction(), random.between(-3, 8));
        shifts += expectShiftsLikeCounting(voice_);
    }
    EXPECT_GT(shifts, 1000);
}

TEST_F(ShiftSearch, FindsOneAtEverySampleOfAPeriodThatIsNotALength) {
    for (const double tempo : {-120.0, std::nan(""), 1.0e300}) {
        settings_.tempo = tempo;
        EXPECT_EQ(samplesBeforeChange(voice_, kRunSamples), 0) << tempo;
    }
}

TEST_F(ShiftSearch, FindsNoneInAnEndlessPeriod) {
    settings_.tempo = 0.0;
    voice_.time = 100.0F;
    EXPECT_EQ(samplesBeforeChange(voice_, kRunSamples), kRunSamples);
}

class TrimSearch : public testing::Test {
protected:
    TrimSearch() {
        settings_.tempo = 0.0; // no shift
        voice_.activeCount = 2;
        voice_.amp[0] = voice_.targetAmp[0] = 0.5F;
    }

    VoiceSettings settings_;
    ModeVoice voice_{&settings_};
};

TEST_F(TrimSearch, EndsBeforeTheSampleInWhichTheLastModeFallsSilent) {
    voice_.amp[1] = 1.0F;
    voice_.ampStep[1] = -0.0625F; // the sixteenth sample arrives
    EXPECT_EQ(samplesBeforeChange(voice_, kRunSamples), 15);
    voice_.amp[1] = -1.0F;
    voice_.ampStep[1] = 0.0625F;
    EXPECT_EQ(samplesBeforeChange(voice_, kRunSamples), 15);
}

TEST_F(TrimSearch, LooksAtTheLastModeOnly) {
    voice_.amp[0] = 1.0F;
    voice_.targetAmp[0] = 0.0F;
    voice_.ampStep[0] = -0.0625F;
    voice_.amp[1] = voice_.targetAmp[1] = 0.5F;
    EXPECT_EQ(samplesBeforeChange(voice_, kRunSamples), kRunSamples);
}

TEST_F(TrimSearch, LetsASilentModeGoAtOnceAndOneThatMovesAwayNever) {
    EXPECT_EQ(samplesBeforeChange(voice_, kRunSamples), 0);
    voice_.amp[1] = 0.5F;
    voice_.ampStep[1] = 0.1F;
    EXPECT_EQ(samplesBeforeChange(voice_, kRunSamples), kRunSamples);
}

} // namespace
