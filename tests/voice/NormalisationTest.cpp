// Amplitudes scaled to sum 1.
#include "tests/voice/VoiceBench.h"

#include <vector>

namespace zelvatone {
namespace {

class Normalisation : public VoiceBench {
protected:
    std::vector<float> normalised(const std::vector<float>& amplitudes) {
        std::copy(amplitudes.begin(), amplitudes.end(), voice_.targetAmp.begin());
        const auto count = static_cast<std::int32_t>(amplitudes.size());
        voice_.normaliseTargets(count);
        return {voice_.targetAmp.begin(), voice_.targetAmp.begin() + count};
    }
};

using Floats = std::vector<float>;

TEST_F(Normalisation, DividesByTheSum) {
    EXPECT_EQ(normalised({1, 2, 5}), (Floats{0.125F, 0.25F, 0.625F}));
    EXPECT_EQ(normalised({0.25F}), (Floats{1}));
}

TEST_F(Normalisation, GivesEachOfEqualModesItsShare) {
    settings_.falloff = 0.0F;
    for (const std::int32_t count : {1, 3, 7, 20, 100}) {
        voice_.baseFreq = 50.0F;
        voice_.computeTargets(count);
        voice_.normaliseTargets(count);
        for (std::int32_t i = 0; i < count; ++i) {
            EXPECT_EQ(voice_.targetAmp[i], 1.0F / static_cast<float>(count));
        }
    }
}

TEST_F(Normalisation, LeavesASumOfZeroAlone) {
    EXPECT_EQ(normalised({0, 0, 0}), (Floats{0, 0, 0}));
    EXPECT_EQ(normalised({0.5F, -0.5F}), (Floats{0.5F, -0.5F}));
    EXPECT_EQ(normalised({}), Floats{});
}

TEST_F(Normalisation, LeavesASilencedSetSilent) {
    settings_.parity = -1.0F; // only the fundamental is there, and it is thinned away
    voice_.baseFreq = 100.0F;
    voice_.computeTargets(1);
    voice_.normaliseTargets(1);
    EXPECT_EQ(voice_.targetAmp[0], 0.0F);
}

TEST_F(Normalisation, LeavesANegativeSumAlone) {
    EXPECT_EQ(normalised({1, -3}), (Floats{1, -3}));
}

TEST_F(Normalisation, LeavesASumThatIsNotANumberAlone) {
    const Floats result = normalised({0.5F, kNaN, 2.0F});
    EXPECT_EQ(result[0], 0.5F);
    EXPECT_TRUE(std::isnan(result[1]));
    EXPECT_EQ(result[2], 2.0F);
}

TEST_F(Normalisation, DividesByAnInfiniteSum) {
    const Floats result = normalised({0.5F, kInfinity});
    EXPECT_EQ(result[0], 0.0F);
    EXPECT_TRUE(std::isnan(result[1]));
}

TEST_F(Normalisation, KeepsTheSignsOfAMixedSetWithAPositiveSum) {
    EXPECT_EQ(normalised({3, -1}), (Floats{1.5F, -0.5F}));
}

TEST_F(Normalisation, SumsInIndexOrderInSinglePrecision) {
    // 2^-24 is lost when it is added to 1, each time; from the other end the two would have
    // made 2^-23 first, and counted.
    EXPECT_EQ(normalised({1.0F, 0x1p-24F, 0x1p-24F}), (Floats{1.0F, 0x1p-24F, 0x1p-24F}));
    EXPECT_EQ(normalised({0x1p-24F, 0x1p-24F, 1.0F})[2], 1.0F / (1.0F + 0x1p-23F));
}

TEST_F(Normalisation, ReachesOverTheTargetsUpToTheCount) {
    voice_.targetAmp[0] = 2.0F;
    voice_.targetAmp[1] = 2.0F;
    voice_.targetAmp[2] = 2.0F;
    voice_.normaliseTargets(2);
    EXPECT_EQ(voice_.targetAmp[0], 0.5F);
    EXPECT_EQ(voice_.targetAmp[1], 0.5F);
    EXPECT_EQ(voice_.targetAmp[2], 2.0F);
}

TEST_F(Normalisation, ReachesOverTheAmplitudesOfTheActiveModesOnly) {
    for (std::int32_t i = 0; i < 3; ++i) {
        voice_.amp[i] = 2.0F;
        voice_.targetAmp[i] = 2.0F;
    }
    voice_.activeCount = 2;
    voice_.targetCount = 3;
    voice_.normaliseAmplitudes();
    EXPECT_EQ(voice_.amp[0], 0.5F);
    EXPECT_EQ(voice_.amp[1], 0.5F);
    EXPECT_EQ(voice_.amp[2], 2.0F);
    EXPECT_EQ(voice_.targetAmp[0], 2.0F);
}

} // namespace
} // namespace zelvatone
