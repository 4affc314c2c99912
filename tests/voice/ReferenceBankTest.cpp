// The voice against its slow twin in double precision: amplitudes, frequencies, phases and output
// stay within the twin's own error bounds.
#include "tests/voice/ReferenceBank.h"

#include "tests/voice/VoiceBench.h"

namespace zelvatone {
namespace {

class AgainstReference : public VoiceBench {
protected:
    AgainstReference() {
        settings_.secondsPerSample = 1.0 / 44100.0;
        settings_.blendSeconds = static_cast<double>(0.01F);
        settings_.initialModes = 8;
        settings_.minModes = 2;
        settings_.maxModes = 12;
        settings_.shiftBeats = 1.0 / 16.0; // at 120 a minute 1/32 second: 1378 samples
    }

    static void expectWithin(const Bounded& expected, float value, const char* what) {
        ASSERT_NEAR(value, expected.value, expected.error) << what;
    }

    void expectModesWithin() {
        ASSERT_EQ(voice_.targetCount, reference_.wanted);
        // One of the two may drop faded modes a sample before the other: they are silent in both,
        // and only the clocks of their phases differ.
        for (int i = 0; i < std::max(voice_.activeCount, reference_.active); ++i) {
            expectWithin(reference_.modes[i].amp.now, voice_.amp[i], "amplitude");
        }
        for (int i = 0; i < std::min(voice_.activeCount, reference_.active); ++i) {
            const ReferenceMode& mode = reference_.modes[i];
            expectWithin(mode.freq.now, voice_.freq[i], "frequency");
            const double apart = std::remainder(voice_.phase[i] - mode.phase.value, kTurn);
            ASSERT_LE(std::fabs(apart), mode.phase.error) << "phase of mode " << i;
        }
    }

    // Renders both. `loosest` says how good the bound is at its worst: half of the width of a
    // table entry is 0.0031, and the rest is rounding.
    void expectAgreement(float frequency, int samples, double loosest) {
        voice_.start(frequency);
        reference_.start(frequency);
        double widest = 0.0;
        for (int n = 0; n < samples; ++n) {
            SCOPED_TRACE("sample " + std::to_string(n));
            const Bounded expected = reference_.tick();
            expectWithin(expected, voice_.tick(), "output");
            expectModesWithin();
            if (HasFatalFailure()) {
                return;
            }
            widest = std::max(widest, expected.error);
        }
        EXPECT_LT(widest, loosest);
    }

    static constexpr double kTurn = 2.0 * std::numbers::pi;
    ReferenceBank reference_{settings_};
};

TEST_F(AgainstReference, ASteadyBankAgrees) {
    settings_.shiftBeats = 1000.0;
    expectAgreement(220.0F, 8000, 0.008);
}

TEST_F(AgainstReference, ASteadyBankWithEveryShapingAgrees) {
    settings_.shiftBeats = 1000.0;
    settings_.primeModes = 3;
    settings_.detune = 0.7F;
    settings_.primePower = 0.4F;
    settings_.falloff = -0.6F;
    settings_.parity = -0.3F;
    settings_.jitterHz = 17.3F;
    settings_.bendRatio = 1.3;
    expectAgreement(123.4F, 8000, 0.008);
}

TEST_F(AgainstReference, AGrowingBankAgrees) {
    settings_.modeShift = 2;
    settings_.exitPeel = 0.3F;
    expectAgreement(150.0F, 7000, 0.012);
}

TEST_F(AgainstReference, AShrinkingBankAgrees) {
    settings_.modeShift = -2;
    settings_.exitPeel = 0.4F;
    expectAgreement(150.0F, 7000, 0.012);
}

TEST_F(AgainstReference, ABankShiftingInMidGlideAgrees) {
    settings_.modeShift = -3;
    settings_.exitPeel = -0.6F;
    settings_.blendSeconds = 0.1; // three shifts long
    expectAgreement(150.0F, 7000, 0.012);
}

TEST_F(AgainstReference, ADroppingBankAgrees) {
    settings_.shiftBeats = 1000.0;
    settings_.dropFactor = 0.9999F;
    // Shorter than the others: the error of the frequency grows with every product, and that of the
    // phase with its square.
    expectAgreement(300.0F, 2000, 0.02);
}

TEST_F(AgainstReference, ADroppingBankWithShiftsThatBringItBackAgrees) {
    settings_.dropModulus = 2;
    settings_.dropFactor = 0.99995F;
    settings_.jitterHz = 5.0F;
    expectAgreement(200.0F, 3000, 0.03);
}

TEST_F(AgainstReference, AModeBackFromSilenceAgrees) {
    settings_.parity = 1.0F; // the eighth mode is trimmed, and enters at each shift
    settings_.exitPeel = 0.5F;
    expectAgreement(100.0F, 5000, 0.008);
}

} // namespace
} // namespace zelvatone
