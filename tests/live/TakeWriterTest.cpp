#include "live/take/TakeWriter.h"

#include "host/Error.h"
#include "host/midi/Song.h"
#include "tests/support/SoundFile.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <thread>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class TakeWriting : public ::testing::Test {
protected:
    TakeWriter::Plan plan(const std::string& name = "take.wav") const {
        return {.sound = folder / name,
                .rate = 48000,
                .channels = 2,
                .parameterNames = {"Attack"},
                .command = "again",
                .programs = {}};
    }
    static TakeEvent move(std::int64_t frame, float value) {
        return {
            .frame = frame, .parameter = 0, .value = value, .status = 0, .data1 = 0, .data2 = 0};
    }

    const TemporaryFolder folder;
    const TakeClock clock{TempoMap(1.0, {}), 48000};
    TakeRings rings{48000, 2, 0.1};
};

// Five times what the rings hold, in blocks, as a sound system has it.
TEST_F(TakeWriting, LosesNoSampleAndLeavesThreeFiles) {
    TakeWriter writer(plan(), rings, clock);
    std::vector<float> expected;
    std::vector<float> block(512);
    for (int i = 0; i < 94; ++i) {
        for (float& sample : block) {
            sample = static_cast<float>(expected.size()) * 0x1p-20F;
            expected.push_back(sample);
        }
        rings.add(move(256 * i, 0.5F));
        rings.add(block);
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    EXPECT_TRUE(writer.isGoingOn());
    writer.finish();
    EXPECT_THAT(folder.names(), ElementsAre("take.csv", "take.mid", "take.wav"));
    EXPECT_EQ(readSoundFile(folder / "take.wav").samples, expected);
    EXPECT_EQ(readSong(folder / "take.mid").seconds, 256 * 94 / 48000.0);
    EXPECT_EQ(writer.warning(), "");
}

// Whole up to its end: what comes after it was full is in none of the files.
TEST_F(TakeWriting, EndsWhereTheRingsWereFull) {
    const std::vector<float> block(512, 0.25F);
    for (int i = 0; i < 100; ++i) {
        rings.add(move(256 * i, 0.5F));
        rings.add(block);
    }
    TakeWriter writer(plan(), rings, clock);
    EXPECT_FALSE(writer.isGoingOn());
    writer.finish();
    const std::size_t blocks = 48000 / 10 / 256; // that fit
    EXPECT_EQ(readSoundFile(folder / "take.wav").samples.size(), blocks * 512);
    const std::string moves = readText(folder / "take.csv");
    EXPECT_EQ(std::count(moves.begin(), moves.end(), '\n'), 2 + static_cast<long>(blocks));
    EXPECT_NE(writer.warning(), "");
}

// With blocks that come one by one, it ends after the first that leaves too little.
TEST_F(TakeWriting, EndsWholeBeforeTheDiskIsFull) {
    TakeWriter::Plan full = plan();
    full.reservedBytes = std::numeric_limits<std::uintmax_t>::max() / 2;
    TakeWriter writer(full, rings, clock);
    while (writer.isGoingOn()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    rings.add(move(0, 0.5F));
    rings.add(std::vector<float>(512, 0.25F));
    writer.finish();
    EXPECT_THAT(folder.names(), ElementsAre("take.csv", "take.mid", "take.wav"));
    EXPECT_THAT(readSoundFile(folder / "take.wav").samples, IsEmpty());
    EXPECT_EQ(readText(folder / "take.csv"), "# again\n");
    EXPECT_THAT(writer.warning(), HasSubstr("the disk is almost full"));
}

// Every file of a take is opened before a note is played.
TEST_F(TakeWriting, SaysAtOnceWhenOneOfItsFilesCannotBe) {
    std::filesystem::create_directory(folder / "take.csv");
    EXPECT_THROW(TakeWriter(plan(), rings, clock), InputError);
    EXPECT_THAT(folder.names(), ElementsAre("take.csv"));
}

TEST_F(TakeWriting, LeavesNoFileWhenItIsNotFinished) {
    {
        TakeWriter writer(plan(), rings, clock);
        rings.add(std::vector<float>(512, 0.25F));
    }
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(TakeWriting, SaysAtOnceWhenItCannotWrite) {
    EXPECT_THROW(TakeWriter(plan("nowhere/take.wav"), rings, clock), InputError);
}

} // namespace
} // namespace zelvatone
