#include "host/render/RecordingEnd.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace zelvatone {
namespace {

constexpr double kRate = 1000.0; // a frame is a millisecond

// Frames of a recording whose sound (one channel) is loud before `loudUntil`, by any block size.
std::int64_t lengthOf(std::int64_t songFrames, std::optional<double> tail, std::int64_t loudUntil,
                      int blockSize) {
    RecordingEnd end(songFrames, tail, kRate);
    for (std::int64_t start = 0; !end.isOver(); start += blockSize) {
        std::vector<float> block(static_cast<std::size_t>(blockSize), 0.0F);
        const auto loud = std::clamp<std::int64_t>(loudUntil - start, 0, blockSize);
        std::fill_n(block.begin(), loud, 0.5F);
        end.take(block, 1);
    }
    return end.frames();
}

TEST(RecordingEnd, AddsTheTailThatWasAskedFor) {
    EXPECT_EQ(lengthOf(2000, 1.5, 0, 64), 3500);
    EXPECT_EQ(lengthOf(2000, 0.0, 9999, 64), 2000);
}

TEST(RecordingEnd, EndsHalfASecondAfterTheSoundDoes) {
    EXPECT_EQ(lengthOf(2000, std::nullopt, 3100, 64), 3600);
}

TEST(RecordingEnd, WaitsForHalfASecondAfterTheSongInAnyCase) {
    EXPECT_EQ(lengthOf(2000, std::nullopt, 700, 64), 2500);
}

TEST(RecordingEnd, GivesUpWaitingForSilenceAfterHalfAMinute) {
    EXPECT_EQ(lengthOf(2000, std::nullopt, 1000000, 512), 32000);
}

TEST(RecordingEnd, TellsWhetherSilenceCame) {
    RecordingEnd silent(0, std::nullopt, kRate);
    silent.take(std::vector<float>(40000, 0.0F), 1);
    EXPECT_FALSE(silent.wasEndless());
    RecordingEnd loud(0, std::nullopt, kRate);
    loud.take(std::vector<float>(40000, 0.5F), 1);
    EXPECT_TRUE(loud.wasEndless());
    RecordingEnd cut(0, 1.0, kRate); // as it was asked for
    cut.take(std::vector<float>(40000, 0.5F), 1);
    EXPECT_FALSE(cut.wasEndless());
}

TEST(RecordingEnd, FadesOutTheLastTwoSecondsOfHalfAMinute) {
    EXPECT_EQ(endlessFade(2000, kRate).start, 2000 + 28000);
    EXPECT_EQ(endlessFade(2000, kRate).end, 2000 + 30000);
}

TEST(RecordingEnd, DoesNotDependOnTheBlockSize) {
    for (const int blockSize : {1, 7, 441, 4096}) {
        EXPECT_EQ(lengthOf(2000, std::nullopt, 3100, blockSize), 3600) << blockSize;
        EXPECT_EQ(lengthOf(2000, 0.1234, 3100, blockSize), 2123) << blockSize;
    }
}

TEST(RecordingEnd, HearsEveryChannel) {
    RecordingEnd end(0, std::nullopt, kRate);
    std::vector<float> block(2000, 0.0F); // 1000 frames of two channels
    block[2 * 300 + 1] = 0.1F;            // the right one, at frame 300
    EXPECT_EQ(end.take(block, 2), 801);
    EXPECT_TRUE(end.isOver());
}

TEST(RecordingEnd, TakesFromABlockOnlyWhatBelongs) {
    RecordingEnd end(10, 0.0, kRate);
    EXPECT_EQ(end.take(std::vector<float>(8), 1), 8);
    EXPECT_EQ(end.take(std::vector<float>(8), 1), 2);
    EXPECT_EQ(end.take(std::vector<float>(8), 1), 0);
}

TEST(RecordingEnd, IsOverAtOnceWhenThereIsNothingToRecord) {
    EXPECT_TRUE(RecordingEnd(0, 0.0, kRate).isOver());
}

} // namespace
} // namespace zelvatone
