// How a phase finds its entry, and what "Chop" leaves of the cycle.
#include "tests/voice/VoiceBench.h"

#include <numbers>

namespace zelvatone {
namespace {

constexpr double kTurn = 2.0 * std::numbers::pi;
constexpr float kTurnAsFloat = 6.2831855F; // the float nearest 2 pi, a little above it

class Lookup : public VoiceBench {
protected:
    std::int32_t entryAt(float phase) {
        const wavetable::Readout readout(settings_);
        const std::int32_t entry = wavetable::lookup(readout, phase);
        if (entry == wavetable::kNoEntry) {
            wavetable::printFailedLookup(readout, phase);
        }
        return entry;
    }

    // Every point halfway between two entries belongs to the one below. Halfway is far from the
    // rounding of a phase, which is below a thousandth of an entry.
    void expectAllEntries(std::int32_t length) {
        for (std::int32_t i = 0; i < length; ++i) {
            EXPECT_EQ(entryAt(static_cast<float>((i + 0.5) * kTurn / length)), i);
        }
    }

    static std::string message(const std::string& index, const std::string& phase) {
        return "Invalid lookup index: " + index + " from " + phase + " blah\n";
    }
};

TEST_F(Lookup, UsesAll1024EntriesWithFullChop) {
    expectAllEntries(1024);
}

TEST_F(Lookup, StretchesTheFirst102EntriesOverTheCycleWithTheKnobsLeastChop) {
    settings_.chop = 0.1F;
    EXPECT_EQ(wavetable::Readout(settings_).length, 102);
    expectAllEntries(102);
}

TEST_F(Lookup, CutsTheUsedLengthOffInsteadOfRoundingIt) {
    settings_.chop = 0.9999F; // 1023.9 entries
    expectAllEntries(1023);
    settings_.chop = 0.5F;
    expectAllEntries(512);
}

TEST_F(Lookup, ReadsTheFirstEntryAtTheStartOfTheCycle) {
    EXPECT_EQ(entryAt(0.0F), 0);
    EXPECT_EQ(entryAt(-0.0F), 0);
}

TEST_F(Lookup, ReadsTheFirstEntryAgainAtExactlyOneCycle) {
    EXPECT_EQ(entryAt(kTurnAsFloat), 0);
    settings_.chop = 0.1F;
    EXPECT_EQ(entryAt(kTurnAsFloat), 0);
}

TEST_F(Lookup, ReadsTheLastEntryJustBelowOneCycle) {
    EXPECT_EQ(entryAt(std::nextafter(kTurnAsFloat, 0.0F)), 1023);
}

TEST_F(Lookup, CountsANegativePhaseFromTheEndOfTheUsedRange) {
    for (const float chop : {1.0F, 0.1F}) {
        settings_.chop = chop;
        const std::int32_t length = chop == 1.0F ? 1024 : 102;
        for (std::int32_t i = 1; i < length; ++i) {
            EXPECT_EQ(entryAt(static_cast<float>(-(i + 0.5) * kTurn / length)), length - i);
        }
    }
}

TEST_F(Lookup, ReadsTheFirstEntryForLessThanOneEntryBelowZero) {
    // Cut off towards zero, so the first entry is two entries wide around phase 0.
    EXPECT_EQ(entryAt(static_cast<float>(-0.5 * kTurn / 1024)), 0);
}

TEST_F(Lookup, ReadsTheFirstEntryAtMinusOneCycle) {
    EXPECT_EQ(entryAt(-kTurnAsFloat), 0);
}

TEST_F(Lookup, FindsNoEntryFarAboveTheCycleAndPrintsALine) {
    std::int32_t entry = 0;
    EXPECT_EQ(printedBy([&] { entry = entryAt(3.0F * kTurnAsFloat); }),
              message("3072", "18.849556"));
    EXPECT_EQ(entry, wavetable::kNoEntry);
}

TEST_F(Lookup, NamesTheIndexAfterTheUsedLengthWasAddedFarBelowTheCycle) {
    std::int32_t entry = 0;
    EXPECT_EQ(printedBy([&] { entry = entryAt(-3.0F * kTurnAsFloat); }),
              message("-2048", "-18.849556"));
    EXPECT_EQ(entry, wavetable::kNoEntry);
}

TEST_F(Lookup, FindsNoEntryForNotANumberAndPrintsALine) {
    // All of these are converted to the lowest integer, and 1024 - 2^31 is this:
    const std::string index = "-2147482624";
    EXPECT_EQ(printedBy([&] { entryAt(kNaN); }), message(index, "nan"));
    EXPECT_EQ(printedBy([&] { entryAt(kInfinity); }), message(index, "inf"));
    EXPECT_EQ(printedBy([&] { entryAt(-kInfinity); }), message(index, "-inf"));
    EXPECT_EQ(printedBy([&] { entryAt(1e30F); }),
              message(index, "1000000015047466219876688855040.000000"));
}

TEST_F(Lookup, NeverFindsAnEntryWithChopBelowOneEntry) {
    settings_.chop = std::nextafter(0x1p-10F, 0.0F);
    for (const float phase : {0.0F, 1.0F, kTurnAsFloat, -1.0F}) {
        std::int32_t entry = 0;
        const std::string text = printedBy([&] { entry = entryAt(phase); });
        EXPECT_EQ(entry, wavetable::kNoEntry) << phase;
        EXPECT_EQ(text, message("0", std::to_string(phase)));
    }
}

TEST_F(Lookup, AlwaysFindsTheOneEntryOfTheLeastChop) {
    settings_.chop = 0x1p-10F;
    for (const float phase : {0.0F, 1.0F, 6.0F, kTurnAsFloat, -1.0F}) {
        EXPECT_EQ(entryAt(phase), 0) << phase;
    }
}

TEST_F(Lookup, NeverFindsAnEntryWithChopThatIsNotANumber) {
    settings_.chop = kNaN;
    printedBy([&] {
        for (const float phase : {0.0F, 1.0F, -1.0F, kTurnAsFloat, kNaN, kInfinity}) {
            EXPECT_EQ(entryAt(phase), wavetable::kNoEntry) << phase;
        }
    });
}

TEST_F(Lookup, PrintsNothingForAPhaseInsideTheCycle) {
    EXPECT_EQ(printedBy([&] { expectAllEntries(1024); }), "");
}

// In the voice: the modes that find nothing are silent, the others are not disturbed.

TEST_F(Lookup, LeavesAModeWithoutAnEntryOutOfTheSum) {
    wave(1);
    place(0, 0.5F, 0.0F, 1.0F); // on the low half
    place(1, 0.25F, 0.0F, 100.0F);
    place(2, 0.125F, 0.0F, 4.0F); // on the high half
    float out = 0.0F;
    EXPECT_EQ(printedBy([&] { out = voice_.tick(); }), message("16297", "100.000000"));
    EXPECT_EQ(out, 0.5F * (-0.5F + 0.125F));
}

TEST_F(Lookup, PrintsOneLineForEachLostModeOfANote) {
    settings_.initialModes = 3;
    for (int note = 0; note < 2; ++note) {
        voice_.start(100.0F);
        voice_.phase[0] = 20.0F;
        voice_.phase[2] = kInfinity;
        EXPECT_EQ(printedBy([&] { tick(3); }),
                  message("3259", "20.000000") + message("-2147482624", "inf"));
    }
}

TEST_F(Lookup, PrintsALineAtTheSampleInWhichAModeIsLost) {
    place(0, 0.5F, 0.0F, kInfinity);
    EXPECT_EQ(printedBy([&] { tick(2); }), message("-2147482624", "inf"));
    voice_.phase[0] = 1.0F;
    place(1, 0.5F, 0.0F, -kInfinity);
    EXPECT_EQ(printedBy([&] { tick(2); }), message("-2147482624", "-inf"));
    voice_.phase[0] = 30.0F; // a second time
    EXPECT_EQ(printedBy([&] { tick(2); }), "");
}

TEST_F(Lookup, IsSilentForAWholeBankWhileChopIsBelowOneEntry) {
    settings_.initialModes = 3;
    settings_.chop = 0.0F;
    voice_.start(100.0F);
    const std::string text = printedBy([&] {
        for (int n = 0; n < 10; ++n) {
            EXPECT_EQ(voice_.tick(), 0.0F);
        }
    });
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 3);
}

TEST_F(Lookup, PlaysOnlyTheLowHalfOfASquareWithHalfChop) {
    wave(1);
    settings_.chop = 0.5F;
    place(0, 2.0F, 10.0F);
    for (int n = 0; n < 1024; ++n) {
        EXPECT_EQ(voice_.tick(), -1.0F) << "sample " << n;
    }
}

} // namespace
} // namespace zelvatone
