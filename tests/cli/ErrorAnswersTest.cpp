// Whatever is wrong, the answer is one line that says what, the right exit status, and no file.

#include "tests/support/MidiFileBuilder.h"
#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Words = std::vector<std::string>;

class ErrorAnswersTest : public ::testing::Test {
protected:
    ErrorAnswersTest() {
        const Bytes whole = midiFileBytes(0, 480, {TrackBytes().noteOn(0, 60).end(480)});
        writeBytes(folder_ / "song.mid", whole);
        writeBytes(folder_ / "cut.mid", Bytes(whole.begin(), whole.end() - 3));
        writeBytes(folder_ / "two.mid", midiFileBytes(2, 480, {TrackBytes().end(1)}));
        writeText(folder_ / "text.mid", "no music");
        std::filesystem::create_directory(folder_ / "folder.wav");
        before_ = folder_.names();
    }

    std::string path(const std::string& name) const { return (folder_ / name).string(); }

    void expectAnswer(const Words& arguments, int exitStatus, const std::string& text) const {
        const ProgramResult result = zelvatoneWith(arguments);
        EXPECT_EQ(result.exitStatus, exitStatus) << result.errors;
        EXPECT_THAT(result.errors, StartsWith("zelvatone: "));
        EXPECT_THAT(result.errors, HasSubstr(text));
        EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(folder_.names(), before_);
    }

    // Renders `song` with the pulse instrument into out.wav; `more` comes last.
    void expectRenderAnswer(const std::string& song, const Words& more, int exitStatus,
                            const std::string& text) const {
        Words arguments{"render",        path(song), "-o",
                        path("out.wav"), "--plugin", testPlugin("pulse")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        expectAnswer(arguments, exitStatus, text);
    }

    void expectOutputAnswer(const std::string& output, int exitStatus,
                            const std::string& text) const {
        expectAnswer({"render", path("song.mid"), "-o", output, "--plugin", testPlugin("pulse")},
                     exitStatus, text);
    }

    void expectPluginAnswer(const std::string& plugin, const std::string& text) const {
        expectAnswer({"render", path("song.mid"), "-o", path("out.wav"), "--plugin", plugin}, 1,
                     text);
    }

    const TemporaryFolder folder_;
    Words before_;
};

TEST_F(ErrorAnswersTest, AboutTheSong) {
    expectRenderAnswer("none.mid", {}, 1, "none.mid: no such file");
    expectRenderAnswer("text.mid", {}, 1, "text.mid: not a MIDI file");
    expectRenderAnswer("cut.mid", {}, 1, "cut.mid: the file is cut short");
    expectRenderAnswer("two.mid", {}, 1, "two.mid: format 2");
    expectRenderAnswer("folder.wav", {}, 1, "folder.wav: is a directory");
}

TEST_F(ErrorAnswersTest, AboutTheOutput) {
    expectOutputAnswer(path("folder.wav"), 1, "folder.wav: it is a directory");
    expectOutputAnswer(path("no/out.wav"), 1, "out.wav: No such file or directory");
    expectOutputAnswer("/proc/out.wav", 1, "cannot write /proc/out.wav: ");
    expectOutputAnswer(path("out.mp3"), 2, "out.mp3': end its name in .wav, .flac or .ogg");
    expectOutputAnswer(path("out"), 2, "end its name in");
    expectOutputAnswer("", 2, "end its name in");
}

TEST_F(ErrorAnswersTest, AboutThePlugIn) {
    expectPluginAnswer(path("none.so"), "none.so: no such plug-in");
    expectPluginAnswer(path("text.mid"), "text.mid is not a plug-in: file too short");
    expectPluginAnswer(path("folder.wav"), "folder.wav is not a plug-in: ");
    expectPluginAnswer(testPlugin("noentry"), "it has no entry point VSTPluginMain");
    expectPluginAnswer(testPlugin("refusing"), "refuses to start");
    expectPluginAnswer(testPlugin("unmarked"), "lacks the interface's mark");
    expectPluginAnswer(testPlugin("effect"), "is an effect, not an instrument");
}

TEST_F(ErrorAnswersTest, AboutParameters) {
    expectRenderAnswer("song.mid", {"--set", "Levle=0.5"}, 1,
                       "unknown parameter 'Levle'; did you mean 'Level'?");
    expectRenderAnswer("song.mid", {"--set", "3=0.5"}, 1, "no parameter 3; they are 0 to 2");
    for (const char* value : {"1.01", "-0.1", "nan", "inf", "", "0,5", "half"}) {
        expectRenderAnswer("song.mid", {"--set", std::string("Level=") + value}, 2,
                           "--set takes values from 0 to 1");
    }
    expectRenderAnswer("song.mid", {"--set", "Level"}, 2, "--set takes NAME=VALUE");
    expectRenderAnswer("song.mid", {"--set", "=0.5"}, 2, "--set takes NAME=VALUE");
}

TEST_F(ErrorAnswersTest, AboutNumbers) {
    for (const char* rate : {"0", "-44100", "7999", "192001", "1e9", "fast", "nan", ""}) {
        expectRenderAnswer("song.mid", {"--rate", rate}, 2, "--rate takes a whole number");
    }
    for (const char* block : {"0", "-1", "65537", "1.5"}) {
        expectRenderAnswer("song.mid", {"--block", block}, 2, "--block takes a whole number");
    }
    for (const char* gain : {"nan", "inf", "121", "loud"}) {
        expectRenderAnswer("song.mid", {"--gain", gain}, 2, "--gain takes");
    }
    for (const char* tail : {"-1", "nan", "601", "Auto"}) {
        expectRenderAnswer("song.mid", {"--tail", tail}, 2, "--tail takes auto or 0 to 600");
    }
    expectRenderAnswer("song.mid", {"--format", "32"}, 2, "unknown format '32'");
}

TEST_F(ErrorAnswersTest, AboutFloatsInFlac) {
    expectAnswer({"render", path("song.mid"), "-o", path("out.flac"), "--format", "float",
                  "--plugin", testPlugin("pulse")},
                 2, "FLAC holds whole numbers only");
}

TEST_F(ErrorAnswersTest, AboutTheCommandLine) {
    expectAnswer({}, 2, "no command given");
    expectAnswer({"rendr"}, 2, "unknown command 'rendr'");
    expectAnswer({"render"}, 2, "see 'zelvatone render --help'");
    expectAnswer({"render", path("song.mid")}, 2, "--output is required");
    expectRenderAnswer("song.mid", {"--bogus"}, 2, "--bogus");
    expectRenderAnswer("song.mid", {path("song.mid")}, 2, "song.mid");
    expectRenderAnswer("song.mid", {"--rate"}, 2, "--rate");
    expectAnswer({"info", "--plugin"}, 2, "--plugin");
}

TEST_F(ErrorAnswersTest, StayOnOneLineWhateverNamesAreGiven) {
    expectAnswer({"render", "a\nb.mid", "-o", path("out.wav")}, 1, "a b.mid: no such file");
}

TEST_F(ErrorAnswersTest, AboutALongSongInAWavFile) {
    writeBytes(folder_ / "song.mid", midiFileBytes(0, 1, {TrackBytes().end(2 * 60 * 60 * 20)}));
    expectRenderAnswer("song.mid", {"--rate", "192000"}, 1, "a WAV file ends at four gigabytes");
}

TEST(ErrorAnswers, SayThatStandardOutputIsFull) {
    for (const std::string command : {"--help", "--version", "info --plugin \"$1\""}) {
        const auto result =
            shellWith("exec \"$0\" " + command + " > /dev/full", {testPlugin("pulse")});
        EXPECT_EQ(result.exitStatus, 1) << command;
        EXPECT_THAT(result.errors, StartsWith("zelvatone: cannot write to standard output"));
    }
}

TEST(Help, ShowsExamplesAndEndsWell) {
    for (const Words& arguments : {Words{"--help"}, Words{"render", "-h"}, Words{"info", "--help"},
                                   Words{"params", "--help"}}) {
        const auto result = zelvatoneWith(arguments);
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_EQ(result.errors, "");
        EXPECT_THAT(result.output, HasSubstr("Examples:\n  zelvatone "));
    }
}

TEST(Help, TellsTheVersion) {
    EXPECT_EQ(zelvatoneWith({"--version"}).output, "zelvatone " ZELVATONE_VERSION "\n");
}

} // namespace
} // namespace zelvatone
