// fillModes: mode sets that stand at once, for looking at.
#include "VoiceBench.h"

#include <numbers>
#include <vector>

namespace zelvatone {
namespace {

class FillModes : public VoiceBench {
protected:
    FillModes() { voice.baseFreq = 120.0F; }

    // Fills with `kind` while no mode is active, so that amplitudes stay as the kind made them.
    void fill(std::int32_t kind, std::int32_t count) {
        settings.modeKind = kind;
        voice.fillModes(count);
        amps.assign(voice.amp.begin(), voice.amp.begin() + count);
        freqs.assign(voice.freq.begin(), voice.freq.begin() + count);
    }

    void clutter() {
        for (std::int32_t i = 0; i < voice.capacity; ++i) {
            voice.amp[i] = 9.0F;
            voice.freq[i] = 9.0F;
            voice.phase[i] = 9.0F;
            voice.ampStep[i] = 9.0F;
            voice.freqStep[i] = 9.0F;
        }
    }

    std::vector<float> amps;
    std::vector<float> freqs;
};

using Floats = std::vector<float>;

TEST_F(FillModes, WithZeroModesWarnsAndChangesNothing) {
    clutter();
    EXPECT_EQ(printedBy([&] { fill(0, 0); }),
              "Warning, calling fillModes() with 0 oscillators...\n");
    EXPECT_EQ(voice.amp[0], 9.0F);
    EXPECT_EQ(voice.freq[0], 9.0F);
}

TEST_F(FillModes, WithZeroModesDoesNotEvenNormalise) {
    place(0, 2.0F, 100.0F);
    printedBy([&] { fill(2, 0); });
    EXPECT_EQ(voice.amp[0], 2.0F);
}

TEST_F(FillModes, OfAnUnknownKindNamesItAndOnlyNormalises) {
    clutter();
    voice.activeCount = 2;
    EXPECT_EQ(printedBy([&] { fill(3, 4); }), "Unknown mode: 3\n");
    EXPECT_EQ(amps, (Floats{0.5F, 0.5F, 9, 9}));
    EXPECT_EQ(freqs, (Floats{9, 9, 9, 9}));
    EXPECT_EQ(printedBy([&] { fill(-1, 4); }), "Unknown mode: -1\n");
}

TEST_F(FillModes, OfAKnownKindPrintsNothing) {
    EXPECT_EQ(printedBy([&] {
                  fill(0, 3);
                  fill(1, 3);
                  fill(2, 3);
              }),
              "");
}

TEST_F(FillModes, NormalisesOverTheActiveModesAndLeavesTheirCount) {
    settings.falloff = 0.0F;
    voice.activeCount = 2;
    voice.targetCount = 7;
    fill(2, 4);
    EXPECT_EQ(amps, (Floats{0.5F, 0.5F, 1, 1}));
    EXPECT_EQ(voice.activeCount, 2);
    EXPECT_EQ(voice.targetCount, 7);
}

TEST_F(FillModes, LeavesTheTargetsAlone) {
    aim(0, 0.25F, 77.0F);
    for (const std::int32_t kind : {0, 1, 2}) {
        fill(kind, 5);
        EXPECT_EQ(voice.targetAmp[0], 0.25F);
        EXPECT_EQ(voice.targetFreq[0], 77.0F);
    }
}

TEST_F(FillModes, GrowsTheBankAndClearsItThen) {
    clutter();
    fill(0, 130);
    EXPECT_EQ(voice.capacity, 130);
    EXPECT_EQ(voice.ampStep[0], 0.0F);
    EXPECT_EQ(voice.freqStep[129], 0.0F);
    EXPECT_EQ(voice.targetFreq.size(), 130U);
}

// Single

TEST_F(FillModes, SingleIsTheNoteAloneAboveSilence) {
    clutter();
    fill(0, 3);
    EXPECT_EQ(amps, (Floats{1, 0, 0}));
    EXPECT_EQ(freqs, (Floats{120, 0, 0}));
    EXPECT_EQ(voice.phase[0], 0.0F);
    EXPECT_EQ(voice.phase[2], 0.0F);
    EXPECT_EQ(voice.amp[3], 9.0F);
    EXPECT_EQ(voice.phase[3], 9.0F);
    EXPECT_EQ(voice.ampStep[0], 9.0F);
}

// Harmonic

TEST_F(FillModes, HarmonicIsTheShapedSeries) {
    clutter();
    settings.parity = 0.5F;
    settings.jitterHz = 7.0F;
    fill(2, 4);
    EXPECT_EQ(amps, (Floats{1.0F, 0.25F, 1.0F / 3.0F, 0.125F}));
    EXPECT_EQ(freqs, (Floats{120, 247, 353, 487}));
}

TEST_F(FillModes, HarmonicPutsTheExtraModesLastUnlikeATargetSet) {
    settings.primeModes = 2;
    settings.detune = 1.0F;
    settings.primePower = 0.75F;
    fill(2, 4);
    EXPECT_EQ(freqs, (Floats{120, 240, 60, 40}));
    EXPECT_EQ(amps, (Floats{1.0F, 0.5F, 0.75F, 0.75F}));
    voice.computeTargets(4);
    EXPECT_EQ(Floats(voice.targetFreq.begin(), voice.targetFreq.begin() + 4),
              (Floats{60, 40, 120, 240}));
}

TEST_F(FillModes, HarmonicIsAllExtraModesWhereMoreAreAskedForThanThereIsRoom) {
    settings.primeModes = 5;
    settings.detune = 1.0F;
    fill(2, 2);
    EXPECT_EQ(freqs, (Floats{60, 40}));
}

TEST_F(FillModes, HarmonicStopsTheAmplitudeGlideOnly) {
    clutter();
    settings.primeModes = 1;
    fill(2, 3);
    for (std::int32_t i = 0; i < 3; ++i) {
        EXPECT_EQ(voice.ampStep[i], 0.0F);
        EXPECT_EQ(voice.freqStep[i], 9.0F);
        EXPECT_EQ(voice.phase[i], 9.0F);
    }
    EXPECT_EQ(voice.ampStep[3], 9.0F);
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
    settings.clusterScale = 0.5F;
    settings.clusterOffsetHz = 20.0F; // 120 +- 80 Hz
    settings.clusterWidthHz = 50.0F;
    fill(1, 5);
    EXPECT_EQ(freqs, (Floats{40, 80, 120, 160, 200}));
    for (std::size_t i = 0; i < 5; ++i) {
        // A handful of float roundings of relative size 2^-24 each.
        const double expected = bell(freqs[i], 120.0, 50.0, 40.0);
        EXPECT_NEAR(amps[i], expected, 1e-6 * expected) << "mode " << i;
    }
}

TEST_F(FillModes, ClusterReadsTheWidth) {
    settings.clusterScale = 0.5F;
    fill(1, 3);
    EXPECT_NEAR(amps[0], bell(60.0, 120.0, 3000.0, 60.0), 1e-8);
    EXPECT_NEAR(amps[1], bell(120.0, 120.0, 3000.0, 60.0), 1e-8);
}

TEST_F(FillModes, ClusterOfAnEvenCountLeavesItsLastModeSilent) {
    clutter();
    settings.clusterScale = 0.5F;
    fill(1, 4);
    EXPECT_EQ(freqs, (Floats{60, 120, 180, 0}));
    EXPECT_GT(amps[2], 0.0F);
    EXPECT_EQ(amps[3], 0.0F);
    EXPECT_EQ(voice.phase[2], 0.0F);
    EXPECT_EQ(voice.phase[3], 9.0F);
}

TEST_F(FillModes, ClusterOfOneOrTwoIsTheNoteAlone) {
    clutter();
    fill(1, 1);
    EXPECT_EQ(freqs, Floats{120});
    EXPECT_EQ(amps, Floats{1});
    clutter();
    fill(1, 2);
    EXPECT_EQ(freqs, (Floats{120, 0}));
    EXPECT_EQ(amps, (Floats{1, 0}));
    EXPECT_EQ(voice.phase[0], 9.0F);
}

TEST_F(FillModes, ClusterSilencesModesBelowZeroHertzAndKeepsTheirPhases) {
    clutter();
    settings.clusterScale = 2.0F; // 120 +- 240 Hz
    fill(1, 5);
    EXPECT_EQ(freqs, (Floats{-120, 0, 120, 240, 360}));
    EXPECT_EQ(amps[0], 0.0F);
    EXPECT_EQ(voice.phase[0], 9.0F);
    EXPECT_EQ(voice.phase[1], 0.0F);
    // At 0 Hz there is no ratio to the note to multiply by.
    EXPECT_NEAR(amps[1], bell(120.0, 240.0, 3000.0, 120.0) / 2.0, 1e-8);
}

TEST_F(FillModes, ClusterAroundANoteThatIsNoNumberLeavesAmplitudesAndPhases) {
    clutter();
    voice.baseFreq = kNaN; // neither below zero nor at or above it
    fill(1, 4);
    EXPECT_TRUE(std::isnan(freqs[0]));
    EXPECT_EQ(amps, (Floats{9, 9, 9, 0}));
    EXPECT_EQ(voice.phase[0], 9.0F);
}

} // namespace
} // namespace zelvatone
