// The voice against its second telling: the same bits everywhere, all the time.
#include "tests/voice/LiteralBank.h"

#include "tests/voice/VoiceBench.h"

#include <random>

namespace zelvatone {
namespace {

class AgainstLiteral : public VoiceBench {
protected:
    AgainstLiteral() {
        settings_.secondsPerSample = 1.0 / 44100.0;
        settings_.blendSeconds = static_cast<double>(0.01F);
        settings_.shiftBeats = 1.0 / 16.0;
        settings_.maxModes = 20;
    }

    void start(float frequency) {
        voice_.start(frequency);
        literal_.start(frequency);
    }

    void expectSameModes() {
        ASSERT_EQ(voice_.activeCount, literal_.active);
        ASSERT_EQ(voice_.targetCount, literal_.wanted);
        ASSERT_EQ(bitsOf(voice_.time), bitsOf(literal_.time));
        for (std::int32_t i = 0; i < 100; ++i) {
            const LiteralMode& mode = literal_.modes[static_cast<std::size_t>(i)];
            ASSERT_EQ(bitsOf(voice_.amp[i]), bitsOf(mode.amp)) << "mode " << i;
            ASSERT_EQ(bitsOf(voice_.freq[i]), bitsOf(mode.freq)) << "mode " << i;
            ASSERT_EQ(bitsOf(voice_.phase[i]), bitsOf(mode.phase)) << "mode " << i;
            ASSERT_EQ(bitsOf(voice_.ampStep[i]), bitsOf(mode.ampStep)) << "mode " << i;
            ASSERT_EQ(bitsOf(voice_.freqStep[i]), bitsOf(mode.freqStep)) << "mode " << i;
            ASSERT_EQ(bitsOf(voice_.targetAmp[i]), bitsOf(mode.targetAmp)) << "mode " << i;
            ASSERT_EQ(bitsOf(voice_.targetFreq[i]), bitsOf(mode.targetFreq)) << "mode " << i;
        }
    }

    void expectSameSound(int samples) {
        for (int n = 0; n < samples; ++n) {
            ASSERT_EQ(bitsOf(voice_.tick()), bitsOf(literal_.tick())) << "sample " << n;
        }
        expectSameModes();
    }

    float between(float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(random_);
    }

    std::int32_t wholeBetween(std::int32_t low, std::int32_t high) {
        return std::uniform_int_distribution<std::int32_t>(low, high)(random_);
    }

    // Any setting that the parameters allow, the wave aside.
    void turnKnobs() {
        settings_.modeShift = wholeBetween(-3, 3);
        settings_.shiftBeats = std::pow(2.0F, between(-5.0F, -2.0F));
        settings_.minModes = wholeBetween(0, 8);
        settings_.maxModes = wholeBetween(0, 30);
        settings_.falloff = between(-3.0F, 0.0F);
        settings_.parity = between(-1.0F, 1.0F);
        settings_.jitterHz = between(0.0F, 100.0F);
        settings_.dropFactor = 1.0F + between(-1e-4F, 1e-4F);
        settings_.chop = between(0.1F, 1.0F);
        settings_.primeModes = wholeBetween(0, 5);
        settings_.detune = between(0.25F, 2.0F);
        settings_.primePower = between(0.01F, 2.0F);
        settings_.dropModulus = wholeBetween(1, 5);
        settings_.blendSeconds = static_cast<double>(between(0.01F, 0.05F));
        settings_.exitPeel = between(-5.0F, 5.0F);
        settings_.bendRatio = std::pow(2.0, between(-1.0F, 1.0F));
        settings_.tempo = static_cast<double>(between(60.0F, 240.0F));
    }

    LiteralBank literal_{settings_};
    std::mt19937 random_{1};
};

TEST_F(AgainstLiteral, OneModeMakesTheSameBits) {
    settings_.initialModes = 1;
    settings_.maxModes = 1;
    start(440.0F);
    expectSameSound(44100);
}

TEST_F(AgainstLiteral, TwoModesThatComeAndGoMakeTheSameBits) {
    settings_.initialModes = 2;
    settings_.exitPeel = 0.37F;
    start(329.62756F);
    for (int n = 0; n < 6; ++n) {
        settings_.maxModes = n % 2 == 0 ? 1 : 20;
        settings_.minModes = n % 2 == 0 ? 0 : 2;
        expectSameSound(2000);
    }
}

TEST_F(AgainstLiteral, ThreeModesThatDropAndReturnMakeTheSameBits) {
    settings_.initialModes = 3;
    settings_.dropFactor = 0.9997F;
    settings_.jitterHz = 13.7F;
    settings_.parity = -0.21F;
    for (const std::int32_t modulus : {1, 2, 3}) {
        settings_.dropModulus = modulus;
        start(97.99886F);
        expectSameSound(6000);
    }
}

TEST_F(AgainstLiteral, OneExtraModeBelowTwoHarmonicsMakesTheSameBits) {
    settings_.initialModes = 3;
    settings_.primeModes = 1;
    settings_.detune = 0.61F;
    settings_.primePower = 1.3F;
    start(523.2511F);
    expectSameSound(6000);
}

TEST_F(AgainstLiteral, FrequenciesThatRunAwayWrapToTheSameBits) {
    settings_.initialModes = 3;
    settings_.shiftBeats = 1000.0;
    for (const float factor : {1.01F, 0.99F}) {
        settings_.dropFactor = factor;
        start(-440.0F); // below zero from the start, and far below minus one cycle a sample later
        expectSameSound(2000);
    }
}

TEST_F(AgainstLiteral, SlotsThatAreUsedAgainMakeTheSameBits) {
    settings_.modeShift = 3;
    settings_.exitPeel = -1.7F;
    for (const std::int32_t modes : {12, 3, 20, 0, 7}) {
        settings_.initialModes = modes;
        start(110.0F);
        expectSameSound(3000);
    }
}

TEST_F(AgainstLiteral, KnobsThatAreTurnedAtRandomMakeTheSameBits) {
    for (int note = 0; note < 30; ++note) {
        SCOPED_TRACE("note " + std::to_string(note));
        wave(note % 5);
        turnKnobs();
        settings_.initialModes = wholeBetween(0, 40);
        start(between(20.0F, 2000.0F));
        for (int block = 0; block < 16 && !HasFatalFailure(); ++block) {
            turnKnobs();
            expectSameSound(128);
        }
    }
}

TEST_F(AgainstLiteral, AllHundredModesMakeTheSameBits) {
    settings_.initialModes = 100;
    settings_.maxModes = 100;
    settings_.modeShift = -3;
    start(41.203446F);
    expectSameSound(4000);
}

} // namespace
} // namespace zelvatone
