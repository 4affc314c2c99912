// The cycle around its middle against the look-up rule.
#include "engine/fast/WaveCycle.h"

#include "engine/WaveTable.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace zelvatone;

namespace {

class WaveCycles : public testing::Test {
protected:
    WaveCycles() {
        settings_.waveKind = 3; // no two entries alike
        wavetable::build(settings_, 1024);
    }

    void expectEveryPhaseToFindItsEntry(float chop) {
        settings_.chop = chop;
        cycle_.update();
        ASSERT_TRUE(cycle_.isReadable());
        const wavetable::Readout readout(settings_);
        for (float phase = -6.2831855F; phase <= 6.2831855F; phase += 0.0003F) {
            const auto index = static_cast<std::int32_t>(cycle_.entriesPerRadian() * phase);
            ASSERT_EQ(cycle_.middle()[index], settings_.table[wavetable::lookup(readout, phase)])
                << phase << " of " << chop;
        }
    }

    VoiceSettings settings_;
    WaveCycle cycle_{&settings_};
};

TEST_F(WaveCycles, HoldTheEntryOfEveryPhaseOfEveryChop) {
    for (const float chop : {1.0F, 0.999F, 0.5F, 0.1F, 0.001F}) {
        expectEveryPhaseToFindItsEntry(chop);
    }
}

TEST_F(WaveCycles, FollowTheWaveAndItsCrushing) {
    expectEveryPhaseToFindItsEntry(1.0F);
    settings_.waveKind = 2;
    wavetable::build(settings_, 1024);
    expectEveryPhaseToFindItsEntry(1.0F);
    settings_.crushBits = 2;
    wavetable::build(settings_, 1024);
    expectEveryPhaseToFindItsEntry(1.0F);
}

TEST_F(WaveCycles, TellWhichIndicesAreInUse) {
    settings_.chop = 0.5F;
    cycle_.update();
    ASSERT_TRUE(cycle_.isReadable());
    EXPECT_EQ(cycle_.indexLimit(), 513.0F); // the first entry stands once more at 512
    settings_.chop = 0.0009F;
    cycle_.update();
    ASSERT_TRUE(cycle_.isReadable());
    EXPECT_EQ(cycle_.indexLimit(), 0.0F);
}

TEST_F(WaveCycles, KeepASilentEntryForLookupsThatFail) {
    for (const float chop : {1.0F, 0.1F, 0.0F}) {
        settings_.chop = chop;
        cycle_.update();
        ASSERT_TRUE(cycle_.isReadable());
        EXPECT_EQ(cycle_.middle()[cycle_.silentEntry()], 0.0F);
    }
}

TEST_F(WaveCycles, RefuseWhatChopCannotSet) {
    for (const float chop : {1.001F, -1.0F, std::nanf("")}) {
        settings_.chop = chop;
        cycle_.update();
        EXPECT_FALSE(cycle_.isReadable()) << chop;
    }
}

} // namespace
