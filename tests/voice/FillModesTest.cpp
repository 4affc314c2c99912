// fillModes: mode sets that stand at once, for looking at.
#include "tests/voice/VoiceBench.h"

#include <numbers>
#include <vector>

namespace zelvatone {
namespace {

class FillModes : public VoiceBench {
protected:
    FillModes() { voice_.baseFreq = 120.0F; }

    // Fills with `kind` while no mode is active, so that amplitudes stay as the kind made them.
    void fill(std::int32_t kind, std::int32_t count) {
        settings_.modeKind = kind;
        voice_.fillModes(count);
        amps_.assign(voice_.amp.begin(), voice_.amp.begin() + count);
        freqs_.assign(voice_.freq.begin(), voice_.freq.begin() + count);
    }

    void clutter() {
        for (std::int32_t i = 0; i < voice_.capacity; ++i) {
            voice_.amp[i] = 9.0F;
            voice_.freq[i] = 9.0F;
            voice_.phase[i] = 9.0F;
            voice_.ampStep[i] = 9.0F;
            voice_.freqStep[i] = 9.0F;
        }
    }

    std::vector<float> amps_;
    std::vector<float> freqs_;
};

using Floats = std::vector<float>;

TEST_F(FillModes, WarnsOfZeroModesAndChangesNothing) {
    clutter();
    EXPECT_EQ(printedBy([&] { fill(0, 0); }),
              "Warning, calling fillModes() with 0 oscillators...\n");
    EXPECT_EQ(voice_.amp[0], 9.0F);
    EXPECT_EQ(voice_.freq[0], 9.0F);
}

TEST_F(FillModes, DoesNotEvenNormaliseZeroModes) {
    place(0, 2.0F, 100.0F);
    printedBy([&] { fill(2, 0); });
    EXPECT_EQ(voice_.amp[0], 2.0F);
}

TEST_F(FillModes, NamesAnUnknownKindAndOnlyNormalises) {
    clutter();
    voice_.activeCount = 2;
    EXPECT_EQ(printedBy([&] { fill(3, 4); }), "Unknown mode: 3\n");
    EXPECT_EQ(amps_, (Floats{0.5F, 0.5F, 9, 9}));
    EXPECT_EQ(freqs_, (Floats{9, 9, 9, 9}));
    EXPECT_EQ(printedBy([&] { fill(-1, 4); }), "Unknown mode: -1\n");
}

TEST_F(FillModes, PrintsNothingForAKnownKind) {
    EXPECT_EQ(printedBy([&] {
                  fill(0, 3);
                  fill(1, 3);
                  fill(2, 3);
              }),
              "");
}

TEST_F(FillModes, NormalisesOverTheActiveModesAndLeavesTheirCount) {
    settings_.falloff = 0.0F;
    voice_.activeCount = 2;
    voice_.targetCount = 7;
    fill(2, 4);
    EXPECT_EQ(amps_, (Floats{0.5F, 0.5F, 1, 1}));
    EXPECT_EQ(voice_.activeCount, 2);
    EXPECT_EQ(voice_.targetCount, 7);
}

TEST_F(FillModes, LeavesTheTargetsAlone) {
    aim(0, 0.25F, 77.0F);
    for (const std::int32_t kind : {0, 1, 2}) {
        fill(kind, 5);
        EXPECT_EQ(voice_.targetAmp[0], 0.25F);
        EXPECT_EQ(voice_.targetFreq[0], 77.0F);
    }
}

TEST_F(FillModes, GrowsTheBankAndClearsItThen) {
    clutter();
    fill(0, 130);
    EXPECT_EQ(voice_.capacity, 130);
    EXPECT_EQ(voice_.ampStep[0], 0.0F);
    EXPECT_EQ(voice_.freqStep[129], 0.0F);
    EXPECT_EQ(voice_.targetFreq.size(), 130U);
}

// Single

TEST_F(FillModes, SingleIsTheNoteAloneAboveSilence) {
    clutter();
    fill(0, 3);
    EXPECT_EQ(amps_, (Floats{1, 0, 0}));
    EXPECT_EQ(freqs_, (Floats{120, 0, 0}));
    EXPECT_EQ(voice_.phase[0], 0.0F);
    EXPECT_EQ(voice_.phase[2], 0.0F);
    EXPECT_EQ(voice_.amp[3], 9.0F);
    EXPECT_EQ(voice_.phase[3], 9.0F);
    EXPECT_EQ(voice_.ampStep[0], 9.0F);
}

// Harmonic

TEST_F(FillModes, HarmonicIsTheShapedSeries) {
    clutter();
    settings_.parity = 0.5F;
    settings_.jitterHz = 7.0F;
    fill(2, 4);
    EXPECT_EQ(amps_, (Floats{1.0F, 0.25F, 1.0F / 3.0F, 0.125F}));
    EXPECT_EQ(freqs_, (Floats{120, 247, 353, 487}));
}

TEST_F(FillModes, HarmonicPutsTheExtraModesLastUnlikeATargetSet) {
    settings_.primeModes = 2;
    settings_.detune = 1.0F;
    settings_.primePower = 0.75F;
    fill(2, 4);
    EXPECT_EQ(freqs_, (Floats{120, 240, 60, 40}));
    EXPECT_EQ(amps_, (Floats{1.0F, 0.5F, 0.75F, 0.75F}));
    voice_.computeTargets(4);
    EXPECT_EQ(Floats(voice_.targetFreq.begin(), voice_.targetFreq.begin() + 4),
              (Floats{60, 40, 120, 240}));
}

TEST_F(FillModes, HarmonicIsAllExtraModesWhereMoreAreAskedForThanThereIsRoom) {
    settings_.primeModes = 5;
    settings_.detune = 1.0F;
    fill(2, 2);
    EXPECT_EQ(freqs_, (Floats{60, 40}));
}

TEST_F(FillModes, HarmonicStopsTheAmplitudeGlideOnly) {
    clutter();
    settings_.primeModes = 1;
    fill(2, 3);
    for (std::int32_t i = 0; i < 3; ++i) {
        EXPECT_EQ(voice_.ampStep[i], 0.0F);
        EXPECT_EQ(voice_.freqStep[i], 9.0F);
        EXPECT_EQ(voice_.phase[i], 9.0F);
    }
    EXPECT_EQ(voice_.ampStep[3], 9.0F);
}

// Cluster

// The bell as a formula: 0.8 of a normal distribution twice over, times the spacing, and louder
// below the note than above it.
double bell(double freq, double base, double width, double spacing) {
    const double d = freq - base;
    const double density =
        std::exp(-d * d / (2.0 * width * width)) / (width * std::sqrt(2.0 * std::numbers::pi));
    return 0.8 * 2.0 * density * spacing * (base / freq);
}

TEST_F(FillModes, ClusterIsABellSpreadEvenlyAroundTheNote) {
    settings_.clusterScale = 0.5F;
    settings_.clusterOffsetHz = 20.0F; // 120 +- 80 Hz
    settings_.clusterWidthHz = 50.0F;
    fill(1, 5);
    EXPECT_EQ(freqs_, (Floats{40, 80, 120, 160, 200}));
    for (std::size_t i = 0; i < 5; ++i) {
        // A handful of float roundings of relative size 2^-24 each.
        const double expected = bell(freqs_[i], 120.0, 50.0, 40.0);
        EXPECT_NEAR(amps_[i], expected, 1e-6 * expected) << "mode " << i;
    }
}

TEST_F(FillModes, ClusterReadsTheWidth) {
    settings_.clusterScale = 0.5F;
    fill(1, 3);
    EXPECT_NEAR(amps_[0], bell(60.0, 120.0, 3000.0, 60.0), 1e-8);
    EXPECT_NEAR(amps_[1], bell(120.0, 120.0, 3000.0, 60.0), 1e-8);
}

TEST_F(FillModes, ClusterOfAnEvenCountLeavesItsLastModeSilent) {
    clutter();
    settings_.clusterScale = 0.5F;
    fill(1, 4);
    EXPECT_EQ(freqs_, (Floats{60, 120, 180, 0}));
    EXPECT_GT(amps_[2], 0.0F);
    EXPECT_EQ(amps_[3], 0.0F);
    EXPECT_EQ(voice_.phase[2], 0.0F);
    EXPECT_EQ(voice_.phase[3], 9.0F);
}

TEST_F(FillModes, ClusterOfOneOrTwoIsTheNoteAlone) {
    clutter();
    fill(1, 1);
    EXPECT_EQ(freqs_, Floats{120});
    EXPECT_EQ(amps_, Floats{1});
    clutter();
    fill(1, 2);
    EXPECT_EQ(freqs_, (Floats{120, 0}));
    EXPECT_EQ(amps_, (Floats{1, 0}));
    EXPECT_EQ(voice_.phase[0], 9.0F);
}

TEST_F(FillModes, ClusterSilencesModesBelowZeroHertzAndKeepsTheirPhases) {
    clutter();
    settings_.clusterScale = 2.0F; // 120 +- 240 Hz
    fill(1, 5);
    EXPECT_EQ(freqs_, (Floats{-120, 0, 120, 240, 360}));
    EXPECT_EQ(amps_[0], 0.0F);
    EXPECT_EQ(voice_.phase[0], 9.0F);
    EXPECT_EQ(voice_.phase[1], 0.0F);
    // At 0 Hz there is no ratio to the note to multiply by.
    EXPECT_NEAR(amps_[1], bell(120.0, 240.0, 3000.0, 120.0) / 2.0, 1e-8);
}

TEST_F(FillModes, ClusterAroundANoteThatIsNotANumberLeavesAmplitudesAndPhases) {
    clutter();
    voice_.baseFreq = kNaN; // neither below zero nor at or above it
    fill(1, 4);
    EXPECT_TRUE(std::isnan(freqs_[0]));
    EXPECT_EQ(amps_, (Floats{9, 9, 9, 0}));
    EXPECT_EQ(voice_.phase[0], 9.0F);
}

} // namespace
} // namespace zelvatone
