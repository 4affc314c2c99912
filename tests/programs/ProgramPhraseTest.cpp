// Every program plays a phrase: three seconds, three notes, at both common sample rates.
#include "engine/ZelvatoneEngine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <thread>
#include <tuple>
#include <vector>

namespace zelvatone {
namespace {

constexpr std::int32_t kBlock = 441;

// A note every second for half a second, from the C below middle C up by fifths.
std::vector<float> playPhrase(std::int32_t program, float sampleRate) {
    ZelvatoneEngine engine;
    engine.setSampleRate(sampleRate);
    engine.setProgram(program);
    const auto second = static_cast<std::int32_t>(sampleRate);
    std::vector<float> phrase;
    std::array<float, kBlock> left{};
    std::array<float, kBlock> right{};
    std::array<float*, 2> outputs{left.data(), right.data()};
    for (std::int32_t start = 0; start < 3 * second; start += kBlock) {
        for (std::int32_t beat = 0; beat < 3; ++beat) {
            const std::int32_t on = beat * second - start;
            const std::int32_t off = on + second / 2;
            if (on >= 0 && on < kBlock) {
                engine.processMidi(0x90, 48 + 7 * beat, 100, on);
            }
            if (off >= 0 && off < kBlock) {
                engine.processMidi(0x80, 48 + 7 * beat, 0, off);
            }
        }
        engine.render(nullptr, outputs.data(), kBlock);
        phrase.insert(phrase.end(), left.begin(), left.end());
    }
    return phrase;
}

class ProgramPhrase : public testing::TestWithParam<std::tuple<std::int32_t, float>> {};

TEST_P(ProgramPhrase, IsFiniteAndHeard) {
    const auto [program, sampleRate] = GetParam();
    const std::vector<float> phrase = playPhrase(program, sampleRate);
    EXPECT_TRUE(std::ranges::all_of(phrase, [](float y) { return std::isfinite(y); }));
    const float peak = std::abs(
        std::ranges::max(phrase, [](float a, float b) { return std::abs(a) < std::abs(b); }));
    EXPECT_GT(peak, 0.05F);
    // Three full-level voices make 1 before the output gain of 3.1622 and the voices' half.
    EXPECT_LE(peak, 1.5812F);
}

INSTANTIATE_TEST_SUITE_P(Of, ProgramPhrase,
                         testing::Combine(testing::Range(0, 42),
                                          testing::Values(44100.0F, 48000.0F)));

TEST(Engines, RenderTheSameOnTwoThreadsAtOnceAsAlone) {
    const std::vector<float> organ = playPhrase(21, 48000.0F);
    const std::vector<float> snoring = playPhrase(37, 48000.0F);
    std::vector<float> organBeside;
    std::vector<float> snoringBeside;
    std::thread first([&] { organBeside = playPhrase(21, 48000.0F); });
    std::thread second([&] { snoringBeside = playPhrase(37, 48000.0F); });
    first.join();
    second.join();
    EXPECT_EQ(organ, organBeside);
    EXPECT_EQ(snoring, snoringBeside);
}

} // namespace
} // namespace zelvatone
