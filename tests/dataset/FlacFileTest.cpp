#include "dataset/FlacFile.h"

#include "dataset/FlacChecksum.h"
#include "tests/support/SoundFile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <string_view>

namespace zelvatone {
namespace {

constexpr std::int32_t kLowest = -(1 << 23);
constexpr std::int32_t kHighest = (1 << 23) - 1;

using Numbers = std::vector<std::int32_t>;

Numbers numbersOf(std::size_t count, const std::function<std::int32_t(std::size_t)>& numberAt) {
    Numbers numbers(count);
    for (std::size_t i = 0; i < count; ++i) {
        numbers[i] = numberAt(i);
    }
    return numbers;
}

Numbers noise(std::size_t count, int bits) {
    std::mt19937 random(7);
    return numbersOf(count, [&](std::size_t /*i*/) {
        return static_cast<std::int32_t>(random()) >> (32 - bits);
    });
}

// By the library that other programs read FLAC with, which checks the sums of all frames.
Numbers read(const std::vector<char>& bytes, int sampleRate) {
    const TemporaryFolder folder;
    writeText(folder / "a.flac", {bytes.begin(), bytes.end()});
    const SoundFile file = readSoundFile(folder / "a.flac");
    EXPECT_EQ(file.channels, 1);
    EXPECT_EQ(file.sampleRate, sampleRate);
    Numbers numbers;
    for (const float sample : file.samples) {
        numbers.push_back(static_cast<std::int32_t>(sample * 0x1p23F)); // exact
    }
    return numbers;
}

void expectBack(const Numbers& numbers, int sampleRate = 44100) {
    EXPECT_EQ(read(flacFile(numbers, sampleRate), sampleRate), numbers);
}

TEST(FlacFile, NumbersOfEveryLengthComeBack) {
    for (std::size_t length = 1; length <= 40; ++length) {
        expectBack(noise(length, 12));
    }
    for (const std::size_t length : {4095U, 4096U, 4097U, 4100U, 8192U, 8200U}) {
        expectBack(noise(length, 12));
    }
}

TEST(FlacFile, NumbersOfEverySizeComeBack) {
    for (int bits = 1; bits <= 24; ++bits) {
        expectBack(noise(5000, bits));
    }
}

// Fourth differences are the largest then: the next to all 32 bits.
TEST(FlacFile, ExtremesInTurnComeBack) {
    expectBack(numbersOf(5000, [](std::size_t i) { return i % 2 == 0 ? kLowest : kHighest; }));
}

// A code of thousands of bits in a part whose other numbers are small.
TEST(FlacFile, SpikeInSilenceComesBack) {
    for (const std::int32_t spike : {1, -1, 1000, kHighest, kLowest}) {
        expectBack(numbersOf(9000, [&](std::size_t i) { return i == 700 ? spike : 0; }));
    }
}

// Codes just too long to be written at once, for every number of bits that follow the zeros.
TEST(FlacFile, SpikesInNoiseComeBack) {
    for (int bits = 2; bits <= 20; ++bits) {
        Numbers numbers = noise(std::size_t{4096} * 4, bits);
        for (std::size_t part = 0; part < 64; ++part) { // one in each part that is coded alike
            const auto size = static_cast<std::int32_t>(part + 8) << (bits - 1);
            numbers[part * 256 + 100] = std::min(size, kHighest);
        }
        expectBack(numbers);
    }
}

TEST(FlacFile, CurvesOfEveryOrderComeBack) {
    for (int order = 0; order <= 5; ++order) {
        expectBack(numbersOf(5000, [&](std::size_t i) {
            const double x = static_cast<double>(i) / 2500.0 - 1.0;
            return static_cast<std::int32_t>(8e6 * std::pow(x, order));
        }));
    }
}

// Frames from 128 on have a number of two bytes, from 2048 on of three.
TEST(FlacFile, LongSoundComesBack) {
    expectBack(numbersOf(std::size_t{2050} * 4096,
                         [](std::size_t i) { return static_cast<std::int32_t>(i / 4096); }));
}

TEST(FlacFile, RateIsKept) {
    for (const int rate : {8000, 44100, 192000}) {
        expectBack(noise(100, 20), rate);
    }
}

TEST(FlacFile, NoiseIsHardlyLongerThanItsSamples) {
    EXPECT_LE(flacFile(noise(44100, 24), 44100).size(), 44100U * 3 + 42 + 11 * 16);
}

// A sine of 441 Hz turns by 0.0628 a sample: its fourth differences are 0.0628^4 of it, 130
// numbers, which take 9 bits or so.
TEST(FlacFile, SineTakesLessThanHalf) {
    const Numbers sine = numbersOf(44100, [](std::size_t i) {
        return static_cast<std::int32_t>(
            std::lrint(8e6 * std::sin(0.0628318530717958648 * static_cast<double>(i))));
    });
    EXPECT_LE(flacFile(sine, 44100).size(), 44100U * 10 / 8);
}

TEST(FlacFile, SilenceTakesNextToNothing) {
    EXPECT_LE(flacFile(Numbers(44100), 44100).size(), 42U + 11 * 16);
}

TEST(FlacNumbers, AreTheNearestAndTheEvenOfTwo) {
    constexpr float kUnit = 0x1p-23F;
    const std::vector<float> samples{0.0F,         0.5F * kUnit,  1.5F * kUnit,
                                     2.5F * kUnit, -0.5F * kUnit, -1.5F * kUnit,
                                     0.6F * kUnit, -0.25F,        0.5F};
    EXPECT_EQ(flacNumbers(samples), (Numbers{0, 0, 2, 2, 0, -2, 1, -(1 << 21), 1 << 22}));
}

TEST(FlacNumbers, CutOffWhatIsBeyondFullScale) {
    const std::vector<float> samples{1.0F, -1.0F, 1e30F, -1e30F, 0.99999994F};
    EXPECT_EQ(flacNumbers(samples), (Numbers{kHighest, kLowest, kHighest, kLowest, kHighest}));
}

// The check values that catalogues of such sums give for these nine digits.
TEST(FlacChecksum, SumsOfTheNineDigitsAreThePublishedOnes) {
    constexpr std::string_view kDigits = "123456789";
    EXPECT_EQ(flacHeaderSum(kDigits), 0xF4);
    EXPECT_EQ(flacFrameSum(kDigits), 0xFEE8);
}

// Bit by bit, as the polynomial is divided by hand.
TEST(FlacChecksum, FrameSumIsTheRemainder) {
    std::string bytes;
    std::mt19937 random(3);
    for (int length = 0; length < 50; ++length) {
        std::uint32_t remainder = 0;
        for (const char byte : bytes) {
            remainder ^= std::uint32_t{static_cast<unsigned char>(byte)} << 8U;
            for (int bit = 0; bit < 8; ++bit) {
                remainder <<= 1U;
                remainder ^= (remainder & 0x10000U) != 0 ? 0x18005U : 0U;
            }
        }
        EXPECT_EQ(flacFrameSum(bytes), remainder) << length;
        bytes.push_back(static_cast<char>(random()));
    }
}

} // namespace
} // namespace zelvatone
