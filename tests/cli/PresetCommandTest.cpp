// Presets as a user keeps them.

#include "tests/support/PresetBytes.h"
#include "tests/support/Program.h"
#include "tests/support/SoundFile.h"

#include <nlohmann/json.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace zelvatone {
namespace {

using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using Words = std::vector<std::string>;

class PresetCommand : public ::testing::Test {
protected:
    std::string path(const std::string& name) const { return (folder_ / name).string(); }

    // Runs with the programmed instrument.
    static ProgramResult run(Words arguments) {
        arguments.insert(arguments.end(), {"--plugin", testPlugin("programmed")});
        return zelvatoneWith(arguments);
    }

    static void expectError(const Words& arguments, int exitStatus, const std::string& text) {
        const ProgramResult result = run(arguments);
        EXPECT_EQ(result.exitStatus, exitStatus);
        EXPECT_THAT(result.errors, StartsWith("zelvatone: "));
        EXPECT_THAT(result.errors, HasSubstr(text));
        EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
        EXPECT_EQ(result.output, "");
    }

    Bytes bytesOf(const std::string& name) const {
        const std::string text = readText(folder_ / name);
        return {text.begin(), text.end()};
    }

    const TemporaryFolder folder_;
};

TEST_F(PresetCommand, SavesAProgramAsItIsSet) {
    const auto result = run({"preset", "save", path("a.fxp"), "--program", "high low", "--set",
                             "Level=0.75", "--name", "Mine"});
    EXPECT_EQ(result.output, path("a.fxp") + ": program 'Mine', 3 parameters\n");
    EXPECT_EQ(bytesOf("a.fxp"),
              programBytes({.name = "Mine", .values = {0x3F400000, 0x3E4CCCCD, 0x3F000000}}));
}

TEST_F(PresetCommand, SavesTheBankWithItsCurrentProgram) {
    const auto result = run({"preset", "save", path("a.FXB"), "--program", "3"});
    EXPECT_EQ(result.output, path("a.FXB") + ": bank of 4 programs, 3 parameters each\n");
    const BankFields fields{
        .currentProgram = 3,
        .programs = {
            programBytes({.name = "Low", .values = {0x3E000000, 0, 0}}),
            programBytes({.name = "High", .values = {0x3F000000, 0, 0x3F000000}}),
            programBytes({.name = "High Low", .values = {0x3E800000, 0x3E4CCCCD, 0x3F000000}}),
            programBytes({.name = "Up/Down", .values = {0x3E99999A, 0x3F800000, 0x3F800000}})}};
    EXPECT_EQ(bytesOf("a.FXB"), bankBytes(fields));
}

TEST_F(PresetCommand, ShowsWhatTheInstrumentMakesOfAProgram) {
    // 0.6 stands in the file; the instrument rounds it down to two quarters.
    writeBytes(folder_ / "a.fxp", programBytes({.values = {0x3E800000, 0, 0x3F19999A}}));
    EXPECT_EQ(run({"preset", "load", path("a.fxp")}).output,
              path("a.fxp") + ": program 'Test', 3 parameters\n"
                              "Index  Name     Label  Stored  Value  Display\n"
                              "    0  Level             0.25   0.25\n"
                              "    1  Percent              0      0\n"
                              "    2  Quarter            0.6    0.5\n");
}

TEST_F(PresetCommand, ShowsABankAndOneProgramOfIt) {
    BankFields fields;
    fields.programs[2] = programBytes({.name = "Other"});
    fields.currentProgram = 1;
    writeBytes(folder_ / "a.fxb", bankBytes(fields));
    EXPECT_EQ(run({"preset", "load", path("a.fxb")}).output,
              path("a.fxb") + ": bank of 4 programs, 3 parameters each\n"
                              "Number  Name\n"
                              "     0  Test\n"
                              "     1  Test   current\n"
                              "     2  Other\n"
                              "     3  Test\n");
    EXPECT_THAT(run({"preset", "load", path("a.fxb"), "--program", "oth"}).output,
                HasSubstr("Program 2 'Other'\nIndex  Name"));
}

TEST_F(PresetCommand, WritesJson) {
    writeBytes(folder_ / "a.fxp", programBytes({}));
    const json report = json::parse(run({"preset", "load", path("a.fxp"), "--json"}).output);
    EXPECT_EQ(report["kind"], "program");
    EXPECT_EQ(report["pluginId"], 0x70726F67);
    ASSERT_EQ(report["programs"].size(), 1U);
    EXPECT_EQ(report["programs"][0]["name"], "Test");
    EXPECT_EQ(report["programs"][0]["parameters"][0]["stored"], 0.25);
}

TEST_F(PresetCommand, ChangesASavedPreset) {
    run({"preset", "save", path("a.fxp"), "--program", "High"});
    run({"preset", "save", path("b.fxp"), "--preset", path("a.fxp"), "--set", "Level=1"});
    EXPECT_EQ(bytesOf("b.fxp"),
              programBytes({.name = "High", .values = {0x3F800000, 0, 0x3F000000}}));
}

TEST_F(PresetCommand, RendersWithAPreset) {
    writeBytes(folder_ / "a.fxp", programBytes({})); // level 0.25
    BankFields fields;
    fields.programs[3] = programBytes({.name = "Loud", .values = {0x3F400000, 0, 0}});
    writeBytes(folder_ / "a.fxb", bankBytes(fields));
    writeBytes(folder_ / "song.mid", midiFileBytes(0, 480, {TrackBytes().noteOn(0, 60).end(48)}));
    const auto peakWith = [&](const Words& more) {
        Words arguments{"render", path("song.mid"), "-o",   path("a.wav"), "--tail", "0",
                        "-q",     "--format",       "float"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        EXPECT_EQ(run(arguments).errors, "");
        return readSoundFile(folder_ / "a.wav").samples[0];
    };
    EXPECT_EQ(peakWith({"--preset", path("a.fxp")}), 0.25F);
    EXPECT_EQ(peakWith({"--preset", path("a.fxb"), "--program", "loud"}), 0.75F);
    EXPECT_EQ(peakWith({"--preset", path("a.fxp"), "--set", "Level=0.5"}), 0.5F);
}

TEST_F(PresetCommand, RefusesBadNames) {
    expectError({"preset", "save", path("a.fxx")}, 2, "end its name in .fxp");
    expectError({"preset", "save", path("a.fxp"), "--name", std::string(25, 'n')}, 2,
                "--name takes");
    expectError({"preset", "save", path("a.fxp"), "--name", ""}, 2, "--name takes");
    expectError({"preset", "save", path("a.fxp"), "--program", "Lo w"}, 1, "unknown program");
    expectError({"preset", "save", path("no/a.fxp")}, 1, "No such file or directory");
    expectError({"preset", "store"}, 2, "see 'zelvatone preset --help'");
    expectError({"preset"}, 2, "see 'zelvatone preset --help'");
    EXPECT_THAT(folder_.names(), IsEmpty());
}

TEST_F(PresetCommand, RefusesBadFiles) {
    expectError({"preset", "load", path("none.fxp")}, 1, "none.fxp: no such file");
    expectError({"preset", "load", folder_.path().string()}, 1,
                "is a directory, not a preset file");
    writeBytes(folder_ / "other.fxp", programBytes({.pluginId = 61546}));
    expectError({"preset", "load", path("other.fxp")}, 1,
                "other.fxp is for the plug-in with the id 61546");
    writeBytes(folder_ / "chunk.fxp", programBytes({.kind = "FPCh"}));
    expectError({"preset", "load", path("chunk.fxp")}, 1, "chunk.fxp: the file is a chunk");
    writeBytes(folder_ / "one.fxp", programBytes({}));
    expectError({"params", "--preset", path("one.fxp"), "--program", "Low"}, 1,
                "one.fxp holds one program, so there is none to choose");
}

} // namespace
} // namespace zelvatone
