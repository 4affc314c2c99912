#include "dataset/SoundTable.h"

#include "host/Error.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Pair;

std::string errorOf(const std::string& text) {
    try {
        const SoundTable table{std::string_view(text)};
        return "none";
    } catch (const InputError& error) {
        return error.what();
    }
}

TEST(SoundTable, HoldsWhatItsCellsSay) {
    const SoundTable table(std::string_view("note,velocity,program,Attack,Wave\n"
                                            "60,100,Organ,0.5,Saw\r\n"
                                            "61,,,1.5 s,0\n"));
    ASSERT_EQ(table.rows(), 2);
    const SoundRow first = table.row(0);
    EXPECT_EQ(first.note, 60);
    EXPECT_EQ(first.velocity, 100);
    EXPECT_TRUE(first.program.has_value());
    EXPECT_THAT(first.values, ElementsAre(Pair(kAttack, 0.5F), Pair(kWave, 2.0F)));
    const SoundRow second = table.row(1);
    EXPECT_EQ(second.note, 61);
    EXPECT_FALSE(second.velocity.has_value());
    EXPECT_FALSE(second.program.has_value());
    EXPECT_THAT(second.values, ElementsAre(Pair(kAttack, 1.5F), Pair(kWave, 0.0F)));
}

TEST(SoundTable, PassesOverLabels) {
    const SoundTable table(
        std::string_view("sound,split,note,peak,loudness\n7,train,60,0.5,-20\n"));
    EXPECT_EQ(table.row(0).note, 60);
    EXPECT_TRUE(table.row(0).values.empty());
}

TEST(SoundTable, BadLineIsNamed) {
    EXPECT_THAT(errorOf("note,Attak\n"), HasSubstr("line 1: unknown parameter 'Attak'"));
    EXPECT_EQ(errorOf("note\n60\n128\n"),
              "line 3: note is a whole number from 0 to 127, not '128'");
    EXPECT_EQ(errorOf("Attack\n3\n"), "line 2: Attack is a number from 0.01 to 2, not '3'");
    EXPECT_EQ(errorOf("Max Modes\n2.5\n"),
              "line 2: Max Modes is a whole number from 0 to 100, not '2.5'");
    EXPECT_EQ(errorOf("note,velocity\n60\n"), "line 2: 1 fields under 2 columns");
    EXPECT_EQ(errorOf("note,NOTE\n60,61\n"), "line 1: two columns are named 'NOTE'");
    EXPECT_EQ(errorOf("note\n"), "has no line with a sound");
    EXPECT_EQ(errorOf(""), "has no line with a sound");
}

TEST(SoundTable, ErrorNamesTheFile) {
    const TemporaryFolder folder;
    writeText(folder / "t.csv", "note\nloud\n");
    try {
        readSoundTable(folder / "t.csv");
        FAIL();
    } catch (const InputError& error) {
        EXPECT_THAT(error.what(), HasSubstr("t.csv: line 2: note is"));
    }
}

} // namespace
} // namespace zelvatone
