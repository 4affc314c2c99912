// The five waves, from their formulas in extended precision.
#include "engine/WaveTable.h"

#include "tests/voice/VoiceBench.h"

#include "engine/ParameterReading.h"
#include "params/ParameterTable.h"

#include <numbers>

namespace zelvatone {
namespace {

constexpr long double kTurn = 2.0L * std::numbers::pi_v<long double>;

class WaveTable : public testing::Test {
protected:
    void build(std::int32_t kind, std::int32_t size = 1024) {
        settings_.waveKind = kind;
        wavetable::build(settings_, size);
    }

    // Holds each entry against the float nearest to the exact value. Only where a sine crosses
    // zero does the double-precision angle show, far below the last bit of any audible entry.
    template<class Exact>
    void expectEntries(Exact exact) {
        for (std::int32_t i = 0; i < settings_.tableSize; ++i) {
            const long double value = exact(i);
            if (std::fabs(value) > 1e-9L) {
                EXPECT_EQ(settings_.table[i], static_cast<float>(value)) << "entry " << i;
            } else {
                EXPECT_NEAR(settings_.table[i], 0.0F, 1e-15F) << "entry " << i;
            }
        }
    }

    VoiceSettings settings_;
};

long double angle(std::int32_t i, std::int32_t size = 1024) {
    return i * kTurn / size;
}

TEST_F(WaveTable, SineFollowsTheSineThroughOneCycle) {
    build(0);
    expectEntries([](std::int32_t i) { return std::sin(angle(i)); });
}

TEST_F(WaveTable, SineTakesItsAngleInDoublePrecision) {
    build(0);
    // sin(x) = pi - x near pi, and the double nearest pi is 1.2246467991473532e-16 below it.
    EXPECT_EQ(settings_.table[512], 1.2246467991473532e-16F);
}

TEST_F(WaveTable, SquareIsLowForTheFirstHalfAndHighForTheSecond) {
    build(1);
    for (std::int32_t i = 0; i < 1024; ++i) {
        EXPECT_EQ(settings_.table[i], i < 512 ? -1.0F : 1.0F) << "entry " << i;
    }
}

TEST_F(WaveTable, SquareOfAnOddSizeGivesTheMiddleEntryToTheHighHalf) {
    build(1, 7);
    const std::vector<float> entries(settings_.table.get(), settings_.table.get() + 7);
    EXPECT_EQ(entries, (std::vector<float>{-1, -1, -1, 1, 1, 1, 1}));
}

TEST_F(WaveTable, SawRisesInEqualStepsFromMinusOne) {
    build(2);
    EXPECT_EQ(settings_.table[0], -1.0F);
    EXPECT_EQ(settings_.table[1023], 1.0F - 1.0F / 512.0F);
    expectEntries([](std::int32_t i) { return i / 512.0L - 1.0L; });
}

TEST_F(WaveTable, SawOfASizeThatIsNotAPowerOfTwoIsRoundedOnceAtTheEnd) {
    build(2, 1000);
    expectEntries([](std::int32_t i) { return (i - 500) / 500.0L; });
}

TEST_F(WaveTable, PolyAddsThreeTenthsOfAThirdPartialHalfARadianAhead) {
    build(3);
    expectEntries([](std::int32_t i) {
        return 0.7F * std::sin(angle(i)) + 0.3F * std::sin(3.0L * angle(i) + 0.5L);
    });
}

TEST_F(WaveTable, SonOfPolyAddsATenthOfATenthPartialHalfARadianAhead) {
    build(4);
    expectEntries([](std::int32_t i) {
        return 0.9F * std::sin(angle(i)) + 0.1F * std::sin(10.0L * angle(i) + 0.5L);
    });
}

TEST_F(WaveTable, EveryWaveStaysBetweenMinusOneAndOne) {
    for (std::int32_t kind = 0; kind < 5; ++kind) {
        build(kind);
        for (std::int32_t i = 0; i < 1024; ++i) {
            EXPECT_LE(std::fabs(settings_.table[i]), 1.0F) << "kind " << kind << " entry " << i;
        }
    }
}

TEST_F(WaveTable, AnUnknownKindPrintsALineAndKeepsTheEntries) {
    for (const std::int32_t kind : {5, 100, -1, kLowestInt}) {
        build(2);
        EXPECT_EQ(printedBy([&] { build(kind); }), "Unsupported waveform type requested...\n");
        expectEntries([](std::int32_t i) { return i / 512.0L - 1.0L; });
    }
}

TEST_F(WaveTable, KnownKindsPrintNothing) {
    for (std::int32_t kind = 0; kind < 5; ++kind) {
        EXPECT_EQ(printedBy([&] { build(kind); }), "");
    }
}

TEST_F(WaveTable, LiesOnASixteenByteBoundaryAndStaysThereWhenRebuilt) {
    build(0);
    const float* where = settings_.table.get();
    EXPECT_EQ(std::bit_cast<std::uintptr_t>(where) % 16, 0U);
    build(4);
    EXPECT_EQ(settings_.table.get(), where);
}

TEST_F(WaveTable, TakesOnANewSize) {
    build(2, 16);
    build(2, 4096);
    EXPECT_EQ(settings_.tableSize, 4096);
    EXPECT_EQ(std::bit_cast<std::uintptr_t>(settings_.table.get()) % 16, 0U);
    expectEntries([](std::int32_t i) { return i / 2048.0L - 1.0L; });
}

// The parameters' side: which moves of "Wave" rebuild.
class WaveParameter : public WaveTable {
protected:
    WaveParameter() { build(0); }

    void read(float wave) {
        program_.parameters[kWave]->setValue(wave);
        readVoiceSettings(program_.parameters, settings_);
    }

    SynthProgram program_ = makeDefaultProgram();
};

TEST_F(WaveParameter, RebuildsTheTableEachTimeItMoves) {
    for (int round = 0; round < 3; ++round) {
        read(1.0F);
        EXPECT_EQ(settings_.table[256], -1.0F);
        read(0.0F);
        EXPECT_EQ(settings_.table[256], 1.0F); // a quarter of a sine
    }
}

TEST_F(WaveParameter, DoesNotRebuildWhileItIsLeftAlone) {
    read(3.0F);
    settings_.table[7] = 0.125F; // a mark that a rebuild would wipe out
    read(3.0F);
    EXPECT_EQ(settings_.table[7], 0.125F);
    read(2.0F);
    EXPECT_EQ(settings_.table[7], 7.0F / 512.0F - 1.0F);
}

} // namespace
} // namespace zelvatone
