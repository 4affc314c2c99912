// What a voice is made of, and how a note begins.
#include "tests/voice/VoiceBench.h"

#include <vector>

namespace zelvatone {
namespace {

using VoiceStart = VoiceBench;

std::vector<ModeArray*> arraysOf(ModeVoice& voice) {
    return {&voice.amp,      &voice.freq,      &voice.phase,     &voice.ampStep,
            &voice.freqStep, &voice.targetAmp, &voice.targetFreq};
}

TEST_F(VoiceStart, FindsANewVoiceEmptyAndSilent) {
    EXPECT_EQ(voice_.gain, 0.5F);
    EXPECT_EQ(voice_.baseFreq, 0.0F);
    EXPECT_EQ(voice_.time, 0.0F);
    EXPECT_EQ(voice_.activeCount, 0);
    EXPECT_EQ(voice_.targetCount, 0);
    EXPECT_EQ(voice_.capacity, 100);
    EXPECT_EQ(voice_.settings, &settings_);
    for (const ModeArray* array : arraysOf(voice_)) {
        EXPECT_EQ(*array, ModeArray(100, 0.0F));
    }
    EXPECT_EQ(voice_.tick(), 0.0F);
}

TEST_F(VoiceStart, NeverShrinksOrClearsABankThatIsLongEnough) {
    for (ModeArray* array : arraysOf(voice_)) {
        array->front() = 3.0F;
    }
    voice_.ensureCapacity(100);
    voice_.ensureCapacity(5);
    voice_.ensureCapacity(-1);
    EXPECT_EQ(voice_.capacity, 100);
    for (const ModeArray* array : arraysOf(voice_)) {
        EXPECT_EQ(array->front(), 3.0F);
    }
}

TEST_F(VoiceStart, ClearsABankThatGrows) {
    for (ModeArray* array : arraysOf(voice_)) {
        array->front() = 3.0F;
    }
    voice_.ensureCapacity(101);
    EXPECT_EQ(voice_.capacity, 101);
    for (const ModeArray* array : arraysOf(voice_)) {
        EXPECT_EQ(*array, ModeArray(101, 0.0F));
    }
}

TEST_F(VoiceStart, StandsOnTheTargetsAtOnce) {
    settings_.initialModes = 4;
    settings_.falloff = 0.0F;
    voice_.start(100.0F);
    EXPECT_EQ(voice_.baseFreq, 100.0F);
    EXPECT_EQ(voice_.activeCount, 4);
    EXPECT_EQ(voice_.targetCount, 4);
    for (std::int32_t i = 0; i < 4; ++i) {
        EXPECT_EQ(voice_.amp[i], 0.25F);
        EXPECT_EQ(voice_.freq[i], 100.0F * static_cast<float>(i + 1));
        EXPECT_EQ(voice_.targetAmp[i], voice_.amp[i]);
        EXPECT_EQ(voice_.targetFreq[i], voice_.freq[i]);
    }
}

TEST_F(VoiceStart, ForgetsTheLastNotesClockAndModes) {
    settings_.initialModes = 8;
    voice_.start(100.0F);
    tick(10);
    EXPECT_GT(voice_.time, 0.0F);
    settings_.initialModes = 2;
    voice_.start(50.0F);
    EXPECT_EQ(voice_.time, 0.0F);
    for (std::int32_t i = 0; i < 100; ++i) {
        EXPECT_EQ(voice_.phase[i], 0.0F);
        if (i >= 2) {
            EXPECT_EQ(voice_.amp[i], 0.0F);
            EXPECT_EQ(voice_.freq[i], 0.0F);
        }
    }
}

TEST_F(VoiceStart, KeepsTheLastNotesStepsAndUnstartedTargets) {
    for (std::int32_t i = 0; i < 100; ++i) {
        voice_.ampStep[i] = 0.5F;
        voice_.freqStep[i] = 2.0F;
        aim(i, 0.75F, 33.0F);
    }
    settings_.initialModes = 3;
    voice_.start(100.0F);
    for (std::int32_t i = 0; i < 100; ++i) {
        EXPECT_EQ(voice_.ampStep[i], 0.5F);
        EXPECT_EQ(voice_.freqStep[i], 2.0F);
        if (i >= 3) {
            EXPECT_EQ(voice_.targetAmp[i], 0.75F);
            EXPECT_EQ(voice_.targetFreq[i], 33.0F);
        }
    }
}

TEST_F(VoiceStart, LimitsTheModesToAHundred) {
    settings_.initialModes = 101;
    voice_.start(10.0F);
    EXPECT_EQ(voice_.activeCount, 100);
    EXPECT_EQ(voice_.targetCount, 100);
    EXPECT_EQ(voice_.freq[99], 1000.0F);
}

TEST_F(VoiceStart, TakesACountThatIsNotANumberForNone) {
    settings_.initialModes = kLowestInt; // what a NaN parameter reads as
    voice_.start(10.0F);
    EXPECT_EQ(voice_.activeCount, 0);
    EXPECT_EQ(voice_.targetCount, 0);
    EXPECT_EQ(voice_.tick(), 0.0F);
}

TEST_F(VoiceStart, IgnoresTheLimitsOfTheShifts) {
    settings_.initialModes = 5;
    settings_.minModes = 10;
    settings_.maxModes = 3;
    voice_.start(10.0F);
    EXPECT_EQ(voice_.activeCount, 5);
}

TEST_F(VoiceStart, LeavesTheGainAlone) {
    voice_.gain = 0.25F;
    voice_.start(10.0F);
    EXPECT_EQ(voice_.gain, 0.25F);
}

} // namespace
} // namespace zelvatone
