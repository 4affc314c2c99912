// "Crush": the wave on few levels. Levels are stated by counting them: 2^(bits - 1) + 1 from -1 to
// +1, evenly spaced.
#include "tests/voice/VoiceBench.h"

#include <set>
#include <vector>

namespace zelvatone {
namespace {

class Crush : public testing::Test {
protected:
    void build(std::int32_t kind, std::int32_t bits, std::int32_t size = 1024) {
        settings_.waveKind = kind;
        settings_.crushBits = bits;
        wavetable::build(settings_, size);
    }

    std::vector<float> entries() const {
        return {settings_.table.get(), settings_.table.get() + settings_.tableSize};
    }

    // What `value` becomes, by way of a kind that keeps the entries and crushes them again.
    float crushed(float value, std::int32_t bits) {
        build(0, 0, 1);
        settings_.table[0] = value;
        printedBy([&] { build(99, bits, 1); });
        return settings_.table[0];
    }

    VoiceSettings settings_;
};

TEST_F(Crush, LeavesOneLevelMoreThanHalfTheBitsPower) {
    const int levels[] = {2, 3, 5, 9, 17, 33, 65, 129}; // for 1 to 8 bits
    for (std::int32_t bits = 1; bits <= 8; ++bits) {
        const int count = levels[bits - 1];
        std::set<float> expected;
        for (int k = 0; k < count; ++k) {
            expected.insert(static_cast<float>(-1.0 + 2.0 * k / (count - 1)));
        }
        build(2, bits); // a saw visits every level
        const std::vector<float> got = entries();
        EXPECT_EQ(std::set<float>(got.begin(), got.end()), expected) << bits << " bits";
    }
}

TEST_F(Crush, PutsEveryEntryOnTheNearestLevel) {
    for (std::int32_t kind = 0; kind < 5; ++kind) {
        build(kind, 0);
        const std::vector<float> smooth = entries();
        for (std::int32_t bits = 1; bits <= 8; ++bits) {
            build(kind, bits);
            const double halfSpacing = std::pow(2.0, 1 - bits);
            for (std::int32_t i = 0; i < 1024; ++i) {
                // 2^-24: what rounding the entry's place between -1 and +1 to float can cost.
                EXPECT_NEAR(settings_.table[i], smooth[i], halfSpacing + 0x1p-24)
                    << "kind " << kind << ", " << bits << " bits, entry " << i;
            }
        }
    }
}

TEST_F(Crush, TurnsTheSineIntoASquareThatStartsHighWithOneBit) {
    build(0, 1);
    for (std::int32_t i = 0; i < 1024; ++i) {
        // Entry 512, half a cycle, is a trace above 0.
        EXPECT_EQ(settings_.table[i], i <= 512 ? 1.0F : -1.0F) << "entry " << i;
    }
}

TEST_F(Crush, RoundsAValueHalfwayBetweenTwoLevelsUp) {
    EXPECT_EQ(crushed(0.0F, 1), 1.0F);
    EXPECT_EQ(crushed(-0.0F, 1), 1.0F);
    EXPECT_EQ(crushed(-0.5F, 2), 0.0F);
    EXPECT_EQ(crushed(0.5F, 2), 1.0F);
    EXPECT_EQ(crushed(-0.75F, 3), -0.5F);
    EXPECT_EQ(crushed(1.0F / 128.0F, 8), 1.0F / 64.0F);
}

TEST_F(Crush, RoundsThePlaceBetweenTheEndsToFloatFirst) {
    // (1 - 2^-24) / 2 is a float, and lies below one half.
    EXPECT_EQ(crushed(-0x1p-24F, 1), -1.0F);
    // (1 - 2^-26) / 2 is not: its nearest float is one half.
    EXPECT_EQ(crushed(-0x1p-26F, 1), 1.0F);
}

TEST_F(Crush, KeepsTheEndsAndEveryLevelWhereTheyAre) {
    for (std::int32_t bits = 1; bits <= 8; ++bits) {
        EXPECT_EQ(crushed(-1.0F, bits), -1.0F);
        EXPECT_EQ(crushed(1.0F, bits), 1.0F);
    }
    EXPECT_EQ(crushed(0.25F, 4), 0.25F);
    EXPECT_EQ(crushed(-63.0F / 64.0F, 8), -63.0F / 64.0F);
}

TEST_F(Crush, NeverCompounds) {
    build(4, 8);
    const std::vector<float> eightBits = entries();
    build(4, 1);
    build(4, 8);
    EXPECT_EQ(entries(), eightBits);
}

TEST_F(Crush, GivesTheSmoothWaveBackWithZeroBits) {
    build(3, 0);
    const std::vector<float> smooth = entries();
    build(3, 2);
    EXPECT_NE(entries(), smooth);
    build(3, 0);
    EXPECT_EQ(entries(), smooth);
}

TEST_F(Crush, WorksOnTheKeptEntriesOfAnUnknownWave) {
    build(2, 0);
    printedBy([&] { build(5, 1); });
    for (std::int32_t i = 0; i < 1024; ++i) {
        EXPECT_EQ(settings_.table[i], i < 512 ? -1.0F : 1.0F) << "entry " << i;
    }
}

TEST_F(Crush, StaysInBoundsForABitCountThatIsNotANumber) {
    build(0, kLowestInt); // what a NaN parameter reads as
    EXPECT_EQ(settings_.tableSize, 1024);
}

} // namespace
} // namespace zelvatone
