// Whatever is wrong, the message is one line that says what, with the right exit status and no
// file.

#include "tests/support/MidiFileBuilder.h"
#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Words = std::vector<std::string>;

class ErrorMessage : public ::testing::Test {
protected:
    ErrorMessage() {
        const Bytes whole = midiFileBytes(0, 480, {TrackBytes().noteOn(0, 60).end(480)});
        writeBytes(folder_ / "song.mid", whole);
        writeBytes(folder_ / "cut.mid", Bytes(whole.begin(), whole.end() - 10)); // in a head
        writeBytes(folder_ / "two.mid", midiFileBytes(2, 480, {TrackBytes().end(1)}));
        writeText(folder_ / "text.mid", "no music");
        std::filesystem::create_directory(folder_ / "folder.wav");
        before_ = folder_.names();
    }

    std::string path(const std::string& name) const { return (folder_ / name).string(); }

    void expectMessage(const Words& arguments, int exitStatus, const std::string& text) const {
        const ProgramResult result = zelvatoneWith(arguments);
        EXPECT_EQ(result.exitStatus, exitStatus) << result.errors;
        EXPECT_THAT(result.errors, StartsWith("zelvatone: "));
        EXPECT_THAT(result.errors, HasSubstr(text));
        EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(folder_.names(), before_);
    }

    // Renders `song` with the pulse instrument into out.wav; `more` comes last.
    void expectRenderMessage(const std::string& song, const Words& more, int exitStatus,
                             const std::string& text) const {
        Words arguments{"render",        path(song), "-o",
                        path("out.wav"), "--plugin", testPlugin("pulse")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        expectMessage(arguments, exitStatus, text);
    }

    void expectOutputMessage(const std::string& output, int exitStatus,
                             const std::string& text) const {
        expectMessage({"render", path("song.mid"), "-o", output, "--plugin", testPlugin("pulse")},
                      exitStatus, text);
    }

    void expectPluginMessage(const std::string& plugin, const std::string& text) const {
        expectMessage({"render", path("song.mid"), "-o", path("out.wav"), "--plugin", plugin}, 1,
                      text);
    }

    const TemporaryFolder folder_;
    Words before_;
};

TEST_F(ErrorMessage, NamesABadSong) {
    expectRenderMessage("none.mid", {}, 1, "none.mid: no such file");
    expectRenderMessage("text.mid", {}, 1, "text.mid: not a MIDI file");
    expectRenderMessage("cut.mid", {}, 1, "cut.mid: the file is cut short");
    expectRenderMessage("two.mid", {}, 1, "two.mid: format 2");
    expectRenderMessage("folder.wav", {}, 1, "folder.wav: is a directory");
}

TEST_F(ErrorMessage, NamesABadOutputFile) {
    expectOutputMessage(path("folder.wav"), 1, "folder.wav: it is a directory");
    expectOutputMessage(path("no/out.wav"), 1, "out.wav: No such file or directory");
    expectOutputMessage("/proc/out.wav", 1, "cannot write /proc/out.wav: ");
    expectOutputMessage(path("out.mp3"), 2, "out.mp3': end its name in .wav, .flac or .ogg");
    expectOutputMessage(path("out"), 2, "end its name in");
    expectOutputMessage("", 2, "--output needs the name of a file, not an empty text");
}

TEST_F(ErrorMessage, NamesABadPlugIn) {
    expectPluginMessage(path("none.so"), "none.so: no such plug-in");
    expectPluginMessage(path("text.mid"), "text.mid is not a plug-in: file too short");
    expectPluginMessage(path("folder.wav"), "folder.wav is not a plug-in: ");
    expectPluginMessage(testPlugin("noentry"), "it has no entry point VSTPluginMain");
    expectPluginMessage(testPlugin("refusing"), "refuses to start");
    expectPluginMessage(testPlugin("unmarked"), "lacks the interface's mark");
    expectPluginMessage(testPlugin("effect"), "is an effect, not an instrument");
}

TEST_F(ErrorMessage, NamesABadParameterOrValue) {
    expectRenderMessage("song.mid", {"--set", "Levle=0.5"}, 1,
                        "unknown parameter 'Levle'; did you mean 'Level'?");
    expectRenderMessage("song.mid", {"--set", "3=0.5"}, 2,
                        "unknown parameter 3; the numbers are 0 to 2");
    for (const char* value : {"1.01", "-0.1", "nan", "inf", "", "0,5", "half"}) {
        expectRenderMessage("song.mid", {"--set", std::string("Level=") + value}, 2,
                            "--set takes values from 0 to 1");
    }
    expectRenderMessage("song.mid", {"--set", "Level"}, 2, "--set takes NAME=VALUE");
    expectRenderMessage("song.mid", {"--set", "=0.5"}, 2, "--set takes NAME=VALUE");
}

TEST_F(ErrorMessage, TellsTheRangeOfAnOption) {
    for (const char* rate : {"0", "-44100", "7999", "192001", "1e9", "fast", "nan", ""}) {
        expectRenderMessage("song.mid", {"--rate", rate}, 2, "--rate takes a whole number");
    }
    for (const char* block : {"0", "-1", "65537", "1.5"}) {
        expectRenderMessage("song.mid", {"--block", block}, 2, "--block takes a whole number");
    }
    for (const char* gain : {"nan", "inf", "121", "loud"}) {
        expectRenderMessage("song.mid", {"--gain", gain}, 2, "--gain takes");
    }
    for (const char* tail : {"-1", "nan", "601", "Auto"}) {
        expectRenderMessage("song.mid", {"--tail", tail}, 2, "--tail takes auto or 0 to 600");
    }
    expectRenderMessage("song.mid", {"--format", "32"}, 2, "unknown format '32'");
}

TEST_F(ErrorMessage, RefusesFloatsInFlac) {
    expectMessage({"render", path("song.mid"), "-o", path("out.flac"), "--format", "float",
                   "--plugin", testPlugin("pulse")},
                  2, "FLAC holds whole numbers only");
}

TEST_F(ErrorMessage, NamesABadCommandLine) {
    expectMessage({}, 2, "no command given");
    expectMessage({"rendr"}, 2, "unknown command 'rendr'; did you mean 'render'?");
    expectMessage({"zzz"}, 2, "unknown command 'zzz'; the commands are render, ");
    expectMessage({"help", "rendr"}, 2, "unknown command 'rendr'; did you mean 'render'?");
    expectMessage({"render"}, 2, "see 'zelvatone render --help'");
    expectMessage({"render", path("song.mid")}, 2, "--output is required");
    expectRenderMessage("song.mid", {"--bogus"}, 2, "unknown option '--bogus'; see 'zelvatone re");
    expectRenderMessage("song.mid", {path("more.mid")}, 2, "more.mid' is one argument too many");
    expectRenderMessage("song.mid", {"--rate"}, 2, "--rate needs a value");
    expectMessage({"info", "--plugin"}, 2, "--plugin");
}

TEST_F(ErrorMessage, NamesTheNearestOption) {
    expectMessage({"--halp"}, 2, "unknown option '--halp'; did you mean '--help'?");
    expectMessage({"render", "--otput=x"}, 2, "unknown option '--otput'; did you mean '--output'?");
    expectMessage({"info", "--jsno"}, 2, "unknown option '--jsno'; did you mean '--json'?");
    expectMessage({"render", "--gian", "3"}, 2, "'--gian'; did you mean '--gain'?");
    expectMessage({"render", "-x"}, 2, "unknown option '-x'; see 'zelvatone render --help'");
}

TEST_F(ErrorMessage, NamesTheCommandsOfACommand) {
    expectMessage({"preset"}, 2, "'preset' needs a command: save or load");
    expectMessage({"preset", "laod"}, 2, "unknown command 'laod'; did you mean 'load'?");
}

TEST_F(ErrorMessage, RefusesAnOptionThatIsGivenTwice) {
    expectRenderMessage("song.mid", {"--rate", "48000", "--rate", "8000"}, 2,
                        "--rate is given twice");
}

TEST_F(ErrorMessage, NamesAnEmptyPath) {
    expectMessage({"render", "", "-o", path("out.wav")}, 2, "song needs the name of a file");
    expectRenderMessage("song.mid", {"--stems", ""}, 2, "--stems needs the name of a folder");
    expectRenderMessage("song.mid", {"--preset", ""}, 2, "--preset needs the name of a file");
    expectMessage({"info", "--plugin", ""}, 2, "--plugin needs the name of a file");
    expectMessage({"tour", "-o", ""}, 2, "--output needs the name of a folder");
}

TEST_F(ErrorMessage, TellsThatNumbersHaveAPoint) {
    expectRenderMessage("song.mid", {"--gain", "-3,5"}, 2, "not '-3,5'; write -3.5, with a point");
    expectRenderMessage("song.mid", {"--set", "Level=0,5"}, 2, "; write 0.5, with a point");
    expectRenderMessage("song.mid", {"--tail", "150,5"}, 2, "; write 150.5, with a point");
    expectRenderMessage("song.mid", {"--rate", "44,1"}, 2, "from 8000 to 192000, not '44,1'\n");
    expectRenderMessage("song.mid", {"--normalize", "-1,5"}, 2, "; write -1.5, with a point");
    expectRenderMessage("song.mid", {"--channel", "1=0@-6,5dB"}, 2, "; write -6.5dB, with a");
}

TEST_F(ErrorMessage, RefusesAPictureThatIsNoPng) {
    expectMessage({"screenshot", "-o", path("x.jpg")}, 2, "x.jpg' in .png");
}

TEST_F(ErrorMessage, HasOneStatusForNumbersOutOfRange) {
    expectRenderMessage("song.mid", {"--program", "42"}, 2, "unknown program");
    expectRenderMessage("song.mid", {"--set", "99=0.5"}, 2, "unknown parameter 99");
    expectRenderMessage("song.mid", {"--channel", "17=0"}, 2, "channels from 1 to 16");
    expectMessage({"screenshot", "-o", path("x.png"), "--help-page", "6"}, 2,
                  "--help-page takes a whole number from 0 to 5, not '6'");
}

TEST_F(ErrorMessage, StaysOnOneLineWhateverTheNames) {
    expectMessage({"render", "a\nb.mid", "-o", path("out.wav")}, 1, "a b.mid: no such file");
}

TEST_F(ErrorMessage, RefusesAWavFileBeyondFourGigabytes) {
    writeBytes(folder_ / "song.mid", midiFileBytes(0, 1, {TrackBytes().end(2 * 60 * 60 * 20)}));
    expectRenderMessage("song.mid", {"--rate", "192000"}, 1, "a WAV file ends at four gigabytes");
}

TEST(StandardOutput, GivesAMessageWhenItIsFull) {
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

TEST(Help, IsTheSameByEitherName) {
    EXPECT_EQ(zelvatoneWith({"help"}).output, zelvatoneWith({"--help"}).output);
    EXPECT_EQ(zelvatoneWith({"help", "preset", "save"}).output,
              zelvatoneWith({"preset", "save", "--help"}).output);
}

TEST(Help, FitsATerminalOf80Columns) {
    for (const Words& arguments :
         {Words{"help"}, Words{"help", "render"}, Words{"help", "song"}, Words{"help", "tour"},
          Words{"help", "edit"}, Words{"help", "screenshot"}, Words{"help", "programs"},
          Words{"help", "params"}, Words{"help", "info"}, Words{"help", "preset"},
          Words{"help", "preset", "save"}, Words{"help", "preset", "load"}}) {
        std::istringstream lines(zelvatoneWith(arguments).output);
        int count = 0;
        for (std::string line; std::getline(lines, line); ++count) {
            EXPECT_LE(line.size(), 80U) << line;
        }
        EXPECT_GT(count, 5);
    }
}

TEST(Help, NamesTheLimitsOfNumbers) {
    const std::string help = zelvatoneWith({"help", "render"}).output;
    for (const char* limits :
         {"8000 to 192000", "1 to 65536", "-120 to 120", "600 seconds", "1 to 64;", "1 to 16"}) {
        EXPECT_THAT(help, HasSubstr(limits));
    }
}

TEST(Help, TellsTheVersion) {
    EXPECT_EQ(zelvatoneWith({"--version"}).output, "zelvatone " ZELVATONE_VERSION "\n");
}

} // namespace
} // namespace zelvatone
