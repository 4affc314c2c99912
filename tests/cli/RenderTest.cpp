#include "tests/support/MidiFileBuilder.h"
#include "tests/support/Program.h"
#include "tests/support/SoundFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <csignal>
#include <thread>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;

class RenderCommand : public ::testing::Test {
protected:
    // Notes at 0 s, 0.5 s and, after the tempo halves, 1.5 s; the song lasts 2 s.
    RenderCommand() {
        writeBytes(song_,
                   midiFileBytes(1, 480,
                                 {TrackBytes().tempo(480, 1000000), TrackBytes()
                                                                        .event(0, {0x90, 64, 64})
                                                                        .event(480, {64, 32})
                                                                        .event(480, {64, 16})
                                                                        .end(240)}));
    }

    ProgramResult render(const std::filesystem::path& output,
                         const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments{"render",        song_.string(), "-o",
                                           output.string(), "--plugin",     testPlugin("pulse")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return zelvatoneWith(arguments);
    }

    const TemporaryFolder folder_;
    const std::filesystem::path song_ = folder_ / "song.mid";
    const std::filesystem::path output_ = folder_ / "song.wav";
};

TEST_F(RenderCommand, PlaysASongIntoAFile) {
    const auto result = render(output_, {"--format", "float", "--rate", "48000", "--tail", "0"});
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    const SoundFile sound = readSoundFile(output_);
    EXPECT_EQ(sound.sampleRate, 48000);
    const auto left = sound.channel(0);
    std::vector<float> expected(96000, 0.0F);
    expected[0] = 0.5F;
    expected[24000] = 0.25F;
    expected[72000] = 0.125F;
    EXPECT_TRUE(left == expected);
}

TEST_F(RenderCommand, EndsWithOneLineAboutTheResult) {
    const auto result = render(output_, {"--tail", "0"});
    EXPECT_THAT(result.output,
                MatchesRegex(".*song\\.wav: 2\\.000 s, peak -6\\.0 dBFS, no clipped samples, "
                             "[0-9.]+ x real time\n"));
    EXPECT_EQ(result.errors, ""); // no progress bar without a terminal
}

TEST_F(RenderCommand, EndsWithOneLineWhateverTheName) {
    const auto result = render(folder_ / "a\nb.wav", {"--tail", "0"});
    EXPECT_THAT(result.output, HasSubstr("a b.wav: 2.000 s"));
    EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 1);
}

TEST_F(RenderCommand, SaysNothingWhenQuiet) {
    const auto result = render(output_, {"--quiet"});
    EXPECT_EQ(result.output + result.errors, "");
}

TEST_F(RenderCommand, WaitsForHalfASecondOfSilence) {
    render(output_);
    EXPECT_EQ(readSoundFile(output_).channel(0).size(), 44100U * 5 / 2);
}

TEST_F(RenderCommand, AppliesParametersAndGain) {
    render(output_, {"--format", "float", "--set", "level=0.5", "--gain", "-20"});
    EXPECT_NEAR(readSoundFile(output_).samples[0], 0.5F * 0.5F * 0.1F, 1e-8);
}

TEST_F(RenderCommand, CountsClippedSamples) {
    // 0.5, 0.25 and 0.125 twelve decibels up: 1.99, 1.0 less a little, 0.5; the right channel
    // holds 0.5 each time.
    const auto result = render(output_, {"--gain", "12", "--format", "16"});
    EXPECT_THAT(result.output, HasSubstr("4 clipped samples"));
    EXPECT_FLOAT_EQ(readSoundFile(output_).samples[0], 32767.0F / 32768.0F);
}

// 1.99 is 5.98 dB above full scale: 12 - 5.98 dB, rounded down to a tenth.
TEST_F(RenderCommand, NamesAGainWithWhichNothingClips) {
    for (const char* name : {"a.wav", "a.flac", "a.ogg"}) {
        const auto clipped = render(folder_ / name, {"--gain", "12"});
        EXPECT_THAT(clipped.output, HasSubstr("\nnothing clips with --gain 6.0\n")) << name;
        const auto fitting = render(folder_ / name, {"--gain", "6.0"});
        EXPECT_THAT(fitting.output, HasSubstr("no clipped samples")) << name;
        EXPECT_EQ(std::count(fitting.output.begin(), fitting.output.end(), '\n'), 1) << name;
    }
}

TEST_F(RenderCommand, CountsTheSameClippedSamplesInEachKindOfFile) {
    for (const char* name : {"a.wav", "a.flac", "a.ogg"}) {
        EXPECT_THAT(render(folder_ / name, {"--gain", "+12dB"}).output,
                    HasSubstr("4 clipped samples"))
            << name;
    }
}

TEST_F(RenderCommand, BringsTheLargestSampleToALevel) {
    const auto peakWith = [&](const std::vector<std::string>& more) {
        EXPECT_EQ(render(output_, more).errors, "");
        const auto samples = readSoundFile(output_).samples;
        return *std::max_element(samples.begin(), samples.end());
    };
    EXPECT_NEAR(peakWith({"--normalize"}), std::pow(10.0, -1.0 / 20.0), 1e-6);
    EXPECT_NEAR(peakWith({"--normalize", "-20 dB", "--set", "Level=0.9"}), 0.1, 1e-6);
    EXPECT_FLOAT_EQ(peakWith({"--normalize", "0", "--format", "16"}), 32767.0F / 32768.0F);
    writeBytes(song_, midiFileBytes(0, 480, {TrackBytes().end(480)})); // silent
    EXPECT_EQ(peakWith({"--normalize"}), 0.0F);
    EXPECT_THAT(folder_.names(), ElementsAre("song.mid", "song.wav"));
}

TEST_F(RenderCommand, TakesTheSongAfterNormalizeForTheSong) {
    const auto result = zelvatoneWith({"render", "--normalize", song_.string(), "-o",
                                       output_.string(), "--plugin", testPlugin("pulse")});
    EXPECT_THAT(result.output, HasSubstr("peak -1.0 dBFS, no clipped samples"));
}

TEST_F(RenderCommand, RefusesALevelThatCannotBe) {
    EXPECT_THAT(render(output_, {"--normalize", "1"}).errors,
                HasSubstr("takes -120 to 0 decibels"));
    EXPECT_THAT(render(output_, {"--normalize", "-130"}).errors,
                HasSubstr("takes -120 to 0 decibels, not '-130'"));
    EXPECT_THAT(render(output_, {"--normalize", "--gain", "3"}).errors,
                HasSubstr("leave out --gain"));
}

TEST_F(RenderCommand, WritesOneChannelInMono) {
    render(output_, {"--mono", "--format", "float", "--tail", "0"});
    const SoundFile sound = readSoundFile(output_);
    EXPECT_EQ(sound.channels, 1);
    // Left 0.5, right 0.5 and then 0.25 and 0.5; see CountsClippedSamples.
    EXPECT_EQ(sound.samples.at(0), 0.5F);
    EXPECT_EQ(sound.samples.at(22050), 0.375F);
}

TEST_F(RenderCommand, TakesOutTheOffset) {
    const auto sumOf = [&](const std::vector<std::string>& more) {
        render(output_, more);
        const auto samples = readSoundFile(output_).samples;
        double sum = 0.0;
        for (const float sample : samples) {
            sum += sample;
        }
        return sum;
    };
    const std::vector<std::string> plain{"--format", "float", "--gain", "20"};
    EXPECT_GT(sumOf(plain), 1.0);
    // An impulse minus its own high-pass is the impulse again, spread out.
    EXPECT_NEAR(sumOf({"--format", "float", "--gain", "20", "--dc-block"}), 0.0, 1e-3);
}

TEST_F(RenderCommand, FadesOutWhatDoesNotEnd) {
    const auto result = zelvatoneWith({"render", song_.string(), "-o", output_.string(), "--plugin",
                                       testPlugin("broken"), "--rate", "8000"});
    EXPECT_THAT(result.output, HasSubstr("\n1 note of the song does not end: faded out half a "
                                         "minute after the end of the song\n"));
    const auto samples = readSoundFile(output_).samples; // the right one is -2 all the time
    EXPECT_EQ(samples.size(), 2U * 32U * 8000U);
    EXPECT_FLOAT_EQ(samples[2U * 30U * 8000U - 1], -1.0F);
    EXPECT_NEAR(samples.back(), 0.0F, 1e-5F);
}

TEST_F(RenderCommand, MakesTheSameFileAtEveryBlockSize) {
    render(output_, {"--block", "512"});
    const std::string reference = readText(output_);
    for (const char* block : {"1", "441", "4096", "65536"}) {
        render(output_, {"--block", block});
        EXPECT_TRUE(readText(output_) == reference) << block;
    }
}

TEST_F(RenderCommand, MakesTheSameFileEachTime) {
    for (const char* name : {"a.wav", "a.flac", "a.ogg"}) {
        EXPECT_EQ(render(folder_ / name).exitStatus, 0);
        EXPECT_EQ(render(folder_ / (std::string("second-") + name)).exitStatus, 0);
        EXPECT_TRUE(readText(folder_ / name) == readText(folder_ / (std::string("second-") + name)))
            << name;
    }
}

TEST_F(RenderCommand, SilencesNonFiniteSamplesAndSaysSo) {
    const auto result = zelvatoneWith({"render", song_.string(), "-o", output_.string(), "--plugin",
                                       testPlugin("broken"), "--tail", "0", "--rate", "8000"});
    EXPECT_THAT(result.output, HasSubstr("peak 6.0 dBFS, 16000 clipped samples, 16000 samples were "
                                         "NaN or infinite (silenced)"));
    EXPECT_FLOAT_EQ(readSoundFile(output_).samples[0], 0.0F);
    EXPECT_FLOAT_EQ(readSoundFile(output_).samples[1], -1.0F);
}

TEST_F(RenderCommand, LeavesNoFileWhenTheDiskIsFull) {
    for (const char* name : {"song.wav", "song.flac", "song.ogg"}) {
        // Four blocks of a kilobyte hold no second of anything.
        const auto result = shellWith(
            R"(ulimit -f 4; exec "$0" render "$1" -o "$2" --plugin "$3" --set Level=0.9 --tail 60)",
            {song_.string(), (folder_ / name).string(), testPlugin("pulse")});
        EXPECT_EQ(result.exitStatus, 1) << name;
        EXPECT_EQ(result.errors,
                  "zelvatone: cannot write " + (folder_ / name).string() + ": File too large\n");
        EXPECT_THAT(folder_.names(), ElementsAre("song.mid")) << name;
    }
}

TEST_F(RenderCommand, WarnsOfALastTrackOfWrongLengthAndPlaysIt) {
    Bytes bytes = midiFileBytes(0, 480, {TrackBytes().noteOn(0, 60).noteOn(480, 60)});
    bytes.pop_back();
    writeBytes(song_, bytes);
    const auto result = render(output_);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors, "zelvatone: " + song_.string() +
                                 ": the length of track 1 is wrong; what is there is played\n");
}

TEST_F(RenderCommand, RefusesAFileThatTheFormatCannotHoldBeforeItStarts) {
    writeBytes(song_, midiFileBytes(0, 1, {TrackBytes().end(2 * 60 * 60 * 6)})); // 6 hours
    const auto result = render(output_, {"--format", "float", "--rate", "192000"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("a WAV file ends at four gigabytes"));
    EXPECT_THAT(folder_.names(), ElementsAre("song.mid"));
}

TEST_F(RenderCommand, RefusesToOverwriteItsSongThroughALink) {
    const std::string before = readText(song_);
    std::filesystem::create_hard_link(song_, folder_ / "hard.wav");
    const auto result = render(folder_ / "hard.wav");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("hard.wav: it is the same file as"));
    EXPECT_EQ(readText(song_), before);
    EXPECT_THAT(folder_.names(), ElementsAre("hard.wav", "song.mid"));
}

TEST_F(RenderCommand, RefusesToWriteTheMixOverAStem) {
    const auto result = render(folder_ / "01.wav", {"--stems", folder_.path().string()});
    EXPECT_THAT(result.errors, HasSubstr(" twice: "));
    EXPECT_THAT(folder_.names(), ElementsAre("song.mid"));
}

void waitUntil(const std::function<bool()>& holds) {
    for (int i = 0; i < 1000 && !holds(); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

// Whether the process has a file open there besides the song, with a name or without one yet.
bool writesInto(const TemporaryFolder& folder, pid_t process) {
    const auto begin = folder.path().string() + "/";
    std::error_code error; // files come and go
    for (const auto& entry :
         std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/fd", error)) {
        const auto file = std::filesystem::read_symlink(entry.path(), error).string();
        if (file.starts_with(begin) && file != begin + "song.mid") {
            return true;
        }
    }
    return false;
}

class InterruptedRender : public RenderCommand, public ::testing::WithParamInterface<int> {};

TEST_P(InterruptedRender, LeavesNoFile) {
    writeBytes(song_, midiFileBytes(0, 1, {TrackBytes().end(2 * 60 * 60 * 20)})); // 20 hours
    const TemporaryFolder scratch;
    Program program({TEST_PROGRAM, "render", song_.string(), "-o", (folder_ / "a.flac").string(),
                     "--plugin", testPlugin("pulse"), "--block", "1"},
                    scratch);
    waitUntil([&] { return writesInto(folder_, program.id()); });
    ASSERT_TRUE(writesInto(folder_, program.id()));
    kill(program.id(), GetParam());
    const auto result = program.wait();
    EXPECT_EQ(result.signal, GetParam());
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "zelvatone: " + song_.string() +
                                 " makes 1200:00.000 of sound (minutes:seconds); Ctrl+C stops the "
                                 "rendering and leaves no file\n");
    EXPECT_THAT(folder_.names(), ElementsAre("song.mid"));
}

INSTANTIATE_TEST_SUITE_P(, InterruptedRender, ::testing::Values(SIGINT, SIGTERM, SIGHUP));

} // namespace
} // namespace zelvatone
