// What one sample sounds like.
#include "tests/voice/VoiceBench.h"

namespace zelvatone {
namespace {

class VoiceOutput : public VoiceBench {
protected:
    VoiceOutput() { wave(1); } // -1 in the first half of the cycle, +1 in the second
};

TEST_F(VoiceOutput, IsHalfTheSumOfTheModes) {
    place(0, 0.5F, 0.0F, 1.0F);
    place(1, 0.25F, 0.0F, 4.0F);
    place(2, 0.125F, 0.0F, 4.0F);
    EXPECT_EQ(voice_.tick(), 0.5F * (-0.5F + 0.25F + 0.125F));
}

TEST_F(VoiceOutput, ScalesWithTheGain) {
    voice_.gain = 0.125F;
    place(0, 1.0F, 0.0F, 4.0F);
    EXPECT_EQ(voice_.tick(), 0.125F);
}

TEST_F(VoiceOutput, ReadsTheTableAtEachModesPhase) {
    wave(2); // a saw: entry i is i / 512 - 1
    for (const int i : {0, 1, 100, 511, 512, 1023}) {
        place(0, 2.0F, 0.0F, static_cast<float>((i + 0.5) * 6.283185307179586 / 1024.0));
        EXPECT_EQ(voice_.tick(), static_cast<float>(i / 512.0 - 1.0)) << "entry " << i;
    }
}

TEST_F(VoiceOutput, IsMadeBeforeTheModesMove) {
    place(0, 1.0F, 0.0F, 4.0F);
    aim(0, 0.0F, 500.0F);
    voice_.ampStep[0] = -0.25F;
    voice_.freqStep[0] = 500.0F;
    EXPECT_EQ(voice_.tick(), 0.5F);
    EXPECT_EQ(voice_.amp[0], 0.75F);
    EXPECT_NE(voice_.phase[0], 4.0F);
}

TEST_F(VoiceOutput, BeginsANoteAtTheStartOfTheCycle) {
    settings_.initialModes = 10;
    settings_.falloff = 0.0F;
    voice_.start(100.0F);
    // Ten times the float nearest 0.1, summed in float, comes to 1.
    EXPECT_NEAR(voice_.tick(), -0.5F, 1e-6F);
}

TEST_F(VoiceOutput, LeavesInactiveModesOut) {
    place(0, 0.5F, 0.0F, 4.0F);
    place(1, 0.5F, 0.0F, 4.0F);
    voice_.activeCount = 1;
    EXPECT_EQ(voice_.tick(), 0.25F);
}

TEST_F(VoiceOutput, SumsInModeOrderInSinglePrecision) {
    place(0, 1.0F, 0.0F, 4.0F);
    place(1, 0x1p-24F, 0.0F, 4.0F); // lost against 1, twice; 2^-23 together would not be
    place(2, 0x1p-24F, 0.0F, 4.0F);
    EXPECT_EQ(voice_.tick(), 0.5F);
}

TEST_F(VoiceOutput, RoundsEachModesShareBeforeItIsAdded) {
    // 1 + 2^-12 squared is 1 + 2^-11 + 2^-24, and no float has the last term. A fused
    // multiply-add would keep it against the -(1 + 2^-11) that is summed first.
    const float a = 1.0F + 0x1p-12F;
    settings_.table[0] = -1.0F;
    settings_.table[512] = a;
    place(0, 1.0F + 0x1p-11F, 0.0F, 0.0F);
    place(1, a, 0.0F, static_cast<float>(512.5 * 6.283185307179586 / 1024.0));
    EXPECT_EQ(voice_.tick(), 0.0F);
}

TEST_F(VoiceOutput, RunsTheClockInFloatSteps) {
    settings_.secondsPerSample = 0.1;
    float clock = 0.0F;
    for (int n = 0; n < 50; ++n) {
        EXPECT_EQ(voice_.time, clock);
        voice_.tick();
        clock = static_cast<float>(clock + 0.1); // the sum in double, then rounded
    }
}

TEST_F(VoiceOutput, AddsTheUnroundedSampleTimeToTheClock) {
    // Just over half of the last bit of 1: in double the sum rounds up. The sample time as a float
    // would be exactly half, and go to even.
    settings_.secondsPerSample = 0x1p-24 + 0x1p-50;
    voice_.time = 1.0F;
    voice_.tick();
    EXPECT_EQ(voice_.time, 1.0F + 0x1p-23F);
}

TEST_F(VoiceOutput, IsTheSameForTheSameNoteAgain) {
    settings_.initialModes = 7;
    voice_.start(123.0F);
    std::vector<float> first;
    for (int n = 0; n < 100; ++n) {
        first.push_back(voice_.tick());
    }
    voice_.start(123.0F);
    for (int n = 0; n < 100; ++n) {
        EXPECT_EQ(bitsOf(voice_.tick()), bitsOf(first[n])) << "sample " << n;
    }
}

TEST_F(VoiceOutput, StaysInTheArraysWithSettingsThatAreNotNumbers) {
    for (float VoiceSettings::*field :
         {&VoiceSettings::falloff, &VoiceSettings::parity, &VoiceSettings::jitterHz,
          &VoiceSettings::dropFactor, &VoiceSettings::chop, &VoiceSettings::detune,
          &VoiceSettings::primePower, &VoiceSettings::exitPeel}) {
        VoiceSettings broken;
        wavetable::build(broken, 1024);
        broken.primeModes = 3;
        broken.*field = kNaN;
        broken.blendSeconds = kNaN;
        broken.tempo = kNaN; // a shift at every sample
        broken.modeShift = 3;
        ModeVoice played(&broken);
        played.start(440.0F);
        printedBy([&] {
            for (int n = 0; n < 100; ++n) {
                played.tick();
            }
        });
        EXPECT_LE(played.activeCount, 100);
    }
}

} // namespace
} // namespace zelvatone
