// What a voice is made of, and how a note begins.
#include "VoiceBench.h"

#include <vector>

namespace zelvatone {
namespace {

using VoiceStart = VoiceBench;

std::vector<ModeArray*> arraysOf(ModeVoice& voice) {
    return {&voice.amp,      &voice.freq,      &voice.phase,     &voice.ampStep,
            &voice.freqStep, &voice.targetAmp, &voice.targetFreq};
}

TEST_F(VoiceStart, FindsANewVoiceEmptyAndSilent) {
    EXPECT_EQ(voice.gain, 0.5F);
    EXPECT_EQ(voice.baseFreq, 0.0F);
    EXPECT_EQ(voice.time, 0.0F);
    EXPECT_EQ(voice.activeCount, 0);
    EXPECT_EQ(voice.targetCount, 0);
    EXPECT_EQ(voice.capacity, 100);
    EXPECT_EQ(voice.settings, &settings);
    for (const ModeArray* array : arraysOf(voice)) {
        EXPECT_EQ(*array, ModeArray(100, 0.0F));
    }
    EXPECT_EQ(voice.tick(), 0.0F);
}

TEST_F(VoiceStart, NeverShrinksOrClearsABankThatIsLongEnough) {
    for (ModeArray* array : arraysOf(voice)) {
        array->front() = 3.0F;
    }
    voice.ensureCapacity(100);
    voice.ensureCapacity(5);
    voice.ensureCapacity(-1);
    EXPECT_EQ(voice.capacity, 100);
    for (const ModeArray* array : arraysOf(voice)) {
        EXPECT_EQ(array->front(), 3.0F);
    }
}

TEST_F(VoiceStart, ClearsABankThatGrows) {
    for (ModeArray* array : arraysOf(voice)) {
        array->front() = 3.0F;
    }
    voice.ensureCapacity(101);
    EXPECT_EQ(voice.capacity, 101);
    for (const ModeArray* array : arraysOf(voice)) {
        EXPECT_EQ(*array, ModeArray(101, 0.0F));
    }
}

TEST_F(VoiceStart, StandsOnTheTargetsAtOnce) {
    settings.initialModes = 4;
    settings.falloff = 0.0F;
    voice.start(100.0F);
    EXPECT_EQ(voice.baseFreq, 100.0F);
    EXPECT_EQ(voice.activeCount, 4);
    EXPECT_EQ(voice.targetCount, 4);
    for (std::int32_t i = 0; i < 4; ++i) {
        EXPECT_EQ(voice.amp[i], 0.25F);
        EXPECT_EQ(voice.freq[i], 100.0F * static_cast<float>(i + 1));
        EXPECT_EQ(voice.targetAmp[i], voice.amp[i]);
        EXPECT_EQ(voice.targetFreq[i], voice.freq[i]);
    }
}

TEST_F(VoiceStart, ForgetsTheLastNotesClockAndModes) {
    settings.initialModes = 8;
    voice.start(100.0F);
    tick(10);
    EXPECT_GT(voice.time, 0.0F);
    settings.initialModes = 2;
    voice.start(50.0F);
    EXPECT_EQ(voice.time, 0.0F);
    for (std::int32_t i = 0; i < 100; ++i) {
        EXPECT_EQ(voice.phase[i], 0.0F);
        if (i >= 2) {
            EXPECT_EQ(voice.amp[i], 0.0F);
            EXPECT_EQ(voice.freq[i], 0.0F);
        }
    }
}

TEST_F(VoiceStart, KeepsTheLastNotesStepsAndUnstartedTargets) {
    for (std::int32_t i = 0; i < 100; ++i) {
        voice.ampStep[i] = 0.5F;
        voice.freqStep[i] = 2.0F;
        aim(i, 0.75F, 33.0F);
    }
    settings.initialModes = 3;
    voice.start(100.0F);
    for (std::int32_t i = 0; i < 100; ++i) {
        EXPECT_EQ(voice.ampStep[i], 0.5F);
        EXPECT_EQ(voice.freqStep[i], 2.0F);
        if (i >= 3) {
            EXPECT_EQ(voice.targetAmp[i], 0.75F);
            EXPECT_EQ(voice.targetFreq[i], 33.0F);
        }
    }
}

TEST_F(VoiceStart, LimitsTheModesToAHundred) {
    settings.initialModes = 101;
    voice.start(10.0F);
    EXPECT_EQ(voice.activeCount, 100);
    EXPECT_EQ(voice.targetCount, 100);
    EXPECT_EQ(voice.freq[99], 1000.0F);
}

TEST_F(VoiceStart, TakesACountThatIsNoNumberForNone) {
    settings.initialModes = kLowestInt; // what a NaN parameter reads as
    voice.start(10.0F);
    EXPECT_EQ(voice.activeCount, 0);
    EXPECT_EQ(voice.targetCount, 0);
    EXPECT_EQ(voice.tick(), 0.0F);
}

TEST_F(VoiceStart, IgnoresTheLimitsOfTheShifts) {
    settings.initialModes = 5;
    settings.minModes = 10;
    settings.maxModes = 3;
    voice.start(10.0F);
    EXPECT_EQ(voice.activeCount, 5);
}

TEST_F(VoiceStart, LeavesTheGainAlone) {
    voice.gain = 0.25F;
    voice.start(10.0F);
    EXPECT_EQ(voice.gain, 0.25F);
}

} // namespace
} // namespace zelvatone
