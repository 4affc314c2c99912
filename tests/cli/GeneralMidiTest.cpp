// What General MIDI says of bends, pedals, volumes and programs, in the sound of rendered files.

#include "tests/support/MidiFileBuilder.h"
#include "tests/support/Program.h"
#include "tests/support/SoundFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using Words = std::vector<std::string>;
using Samples = std::vector<float>;

constexpr double kRate = 8000.0;
constexpr int kA4 = 69; // 440 Hz
constexpr int kE4 = 64;

// 120 quarters a minute of 480 ticks: as many ticks as a time in seconds has.
std::uint32_t ticks(double seconds) {
    return static_cast<std::uint32_t>(std::lround(seconds * 960.0));
}

// Messages at their times, in any order of channels.
class Score {
public:
    // `seconds` never before those of the message added last.
    Score& at(double seconds, std::initializer_list<int> bytes) {
        track_.event(ticks(seconds) - now_, bytes);
        now_ = ticks(seconds);
        return *this;
    }
    Bytes file(double seconds) {
        return midiFileBytes(0, 480, {track_.end(ticks(seconds) - now_)});
    }

private:
    TrackBytes track_;
    std::uint32_t now_ = 0;
};

// The frequency of a tone near `hertz`, from the turn of its phase between two seconds, which begin
// at `start`. A window keeps other tones out.
double pitchOf(const Samples& samples, double hertz, double start) {
    constexpr double kTwoPi = 2.0 * std::numbers::pi;
    std::complex<double> sums[2];
    for (int second = 0; second < 2; ++second) {
        for (std::size_t i = 0; i < static_cast<std::size_t>(kRate); ++i) {
            const double n = (start + second) * kRate + static_cast<double>(i);
            const double window = 1.0 - std::cos(kTwoPi * static_cast<double>(i) / kRate);
            sums[second] += window * static_cast<double>(samples.at(static_cast<std::size_t>(n))) *
                            std::polar(1.0, -kTwoPi * std::fmod(hertz * n / kRate, 1.0));
        }
    }
    return hertz + std::arg(sums[1] / sums[0]) / kTwoPi;
}

double centsFrom(double hertz, double nominal) {
    return 1200.0 * std::log2(hertz / nominal);
}

float peakBetween(const Samples& samples, double start, double end) {
    float peak = 0.0F;
    for (auto n = static_cast<std::size_t>(start * kRate);
         n < static_cast<std::size_t>(end * kRate); ++n) {
        peak = std::max(peak, std::abs(samples.at(n)));
    }
    return peak;
}

// Notes are sines with an attack and a release of 10 ms.
class GeneralMidi : public ::testing::Test {
protected:
    ProgramResult run(Score score, double seconds, const Words& more = {}) const {
        writeBytes(folder_ / "song.mid", score.file(seconds));
        Words words{"render",   path("song.mid"),
                    "-o",       path("out.wav"),
                    "--format", "float",
                    "--rate",   "8000",
                    "--tail",   "0",
                    "--plugin", TEST_INSTRUMENT,
                    "--set",    "Min Modes=1 osc",
                    "--set",    "Max Modes=1 osc",
                    "--set",    "Mode Init=1 osc",
                    "--set",    "Attack=0",
                    "--set",    "Release=0"};
        words.insert(words.end(), more.begin(), more.end());
        const auto result = zelvatoneWith(words);
        EXPECT_EQ(result.errors, "");
        return result;
    }
    Samples play(const Score& score, double seconds, const Words& more = {}) const {
        run(score, seconds, more);
        return readSoundFile(folder_ / "out.wav").channel(0);
    }
    Samples stem(const std::string& name) const {
        return readSoundFile(folder_ / "stems" / name).channel(0);
    }
    std::string path(const std::string& name) const { return (folder_ / name).string(); }

    const TemporaryFolder folder_;
};

TEST_F(GeneralMidi, BendOnOneChannelLeavesAnotherInTune) {
    Score alone;
    alone.at(0.0, {0x90, kA4, 100});
    const Samples expected = play(alone, 2.6);
    Score both;
    both.at(0.0, {0x90, kA4, 100}).at(0.0, {0x91, kE4, 100});
    for (int step = 0; step < 20; ++step) {
        both.at(0.1 * step, {0xE1, 0, 6 * step});
    }
    const Samples mix = play(both, 2.6, {"--stems", path("stems")});
    EXPECT_LT(std::abs(centsFrom(pitchOf(mix, 440.0, 0.3), 440.0)), 0.1);
    EXPECT_TRUE(stem("01-Default.wav") == expected) << "not a sample of it changes";
    EXPECT_TRUE(mix != expected);
}

// The upper end of the wheel is 8191 / 8192 of the range.
TEST_F(GeneralMidi, BendsByTwoSemitonesOrAsTheFileAsks) {
    // How far the end of the wheel is from `cents`.
    const auto errorOf = [&](Score score, double cents) {
        score.at(0.0, {0xE2, 127, 127}).at(0.0, {0x92, kA4, 100});
        const double hertz = 440.0 * std::exp2(cents * 8191.0 / 8192.0 / 1200.0);
        return centsFrom(pitchOf(play(score, 2.6), hertz, 0.3), hertz);
    };
    EXPECT_NEAR(errorOf({}, 200.0), 0.0, 0.1);
    Score five;
    five.at(0.0, {0xB2, 101, 0}).at(0.0, {0xB2, 100, 0}).at(0.0, {0xB2, 6, 5});
    EXPECT_NEAR(errorOf(five, 500.0), 0.0, 0.1);
}

TEST_F(GeneralMidi, PedalHoldsTheNotesOfItsChannel) {
    Score score;
    score.at(0.0, {0xB0, 64, 127})
        .at(0.0, {0x90, kA4, 100})
        .at(0.0, {0x91, kE4, 100})
        .at(0.2, {0x80, kA4, 0})
        .at(0.2, {0x81, kE4, 0})
        .at(0.6, {0xB0, 64, 0});
    play(score, 1.0, {"--stems", path("stems")});
    const Samples held = stem("01-Default.wav");
    EXPECT_GT(peakBetween(held, 0.5, 0.59), 0.1F);
    EXPECT_EQ(peakBetween(held, 0.65, 1.0), 0.0F);
    EXPECT_EQ(peakBetween(stem("02-Default.wav"), 0.25, 1.0), 0.0F);
}

TEST_F(GeneralMidi, VolumeAndExpressionScaleTheirChannel) {
    Score score;
    score.at(0.0, {0x90, kA4, 100})
        .at(0.0, {0x91, kE4, 100})
        .at(0.4, {0xB1, 7, 64})
        .at(0.8, {0xB1, 11, 32});
    play(score, 1.2, {"--stems", path("stems")});
    const Samples scaled = stem("02-Default.wav");
    const float full = peakBetween(scaled, 0.2, 0.39);
    EXPECT_EQ(peakBetween(stem("01-Default.wav"), 0.2, 0.39),
              peakBetween(stem("01-Default.wav"), 0.85, 1.2));
    // Each scales by the square of its share, on General MIDI's curve of 40 dB a decade.
    const float volume = std::pow(64.0F / 127.0F, 2.0F);
    const float expression = std::pow(32.0F / 127.0F, 2.0F);
    EXPECT_NEAR(peakBetween(scaled, 0.45, 0.79) / full, volume, 0.005);
    EXPECT_NEAR(peakBetween(scaled, 0.85, 1.2) / full, volume * expression, 0.005);
}

TEST_F(GeneralMidi, AllSoundOffSilencesItsChannelAtOnce) {
    Score score;
    score.at(0.0, {0x90, kA4, 100})
        .at(0.0, {0x91, kE4, 100})
        .at(0.5, {0xB0, 120, 0})
        .at(0.8, {0x90, kA4, 100});
    play(score, 1.2, {"--stems", path("stems"), "--set", "Release=2 s"});
    const Samples stopped = stem("01-Default.wav");
    EXPECT_GT(peakBetween(stopped, 0.4, 0.5), 0.1F);
    EXPECT_EQ(peakBetween(stopped, 0.5, 0.79), 0.0F);
    EXPECT_GT(peakBetween(stopped, 0.9, 1.2), 0.1F);
    EXPECT_GT(peakBetween(stem("02-Default.wav"), 0.5, 1.2), 0.1F);
}

TEST_F(GeneralMidi, AllNotesOffReleasesTheNotesOfItsChannel) {
    Score score;
    score.at(0.0, {0x90, kA4, 100}).at(0.0, {0x91, kE4, 100}).at(0.5, {0xB0, 123, 0});
    play(score, 1.0, {"--together", "--stems", path("stems"), "--set", "Sustain=1"});
    const Samples both = stem("rest-Default.wav");
    // One sine of two is left, of the same height.
    EXPECT_NEAR(peakBetween(both, 0.6, 1.0) / peakBetween(both, 0.3, 0.5), 0.5F, 0.05F);
    EXPECT_LT(
        std::abs(centsFrom(pitchOf(play(score, 2.6, {"--together"}), 329.628, 0.55), 329.628)),
        0.1);
}

TEST_F(GeneralMidi, ResettingControllersLiftsThePedalAndCentresBendAndExpression) {
    Score score;
    score.at(0.0, {0xB0, 11, 0})
        .at(0.0, {0xE0, 0, 127})
        .at(0.0, {0xB0, 64, 127})
        .at(0.0, {0x90, kE4, 100})
        .at(0.1, {0x80, kE4, 0})
        .at(0.2, {0xB0, 121, 0})
        .at(0.3, {0x90, kA4, 100});
    const Samples samples = play(score, 2.6);
    EXPECT_EQ(peakBetween(samples, 0.0, 0.2), 0.0F);
    EXPECT_EQ(peakBetween(samples, 0.25, 0.3), 0.0F);
    EXPECT_LT(std::abs(centsFrom(pitchOf(samples, 440.0, 0.5), 440.0)), 0.1);
}

Score withDrums() {
    Score score;
    score.at(0.0, {0x90, kA4, 100}).at(0.0, {0x99, 36, 100});
    return score;
}

TEST_F(GeneralMidi, DrumsAreLeftOutUnlessTheyAreAskedFor) {
    Score alone;
    alone.at(0.0, {0x90, kA4, 100});
    const Samples expected = play(alone, 0.5);
    for (const char* layout : {"--split", "--together"}) {
        EXPECT_TRUE(play(withDrums(), 0.5, {layout}) == expected) << layout;
    }
    EXPECT_THAT(run(withDrums(), 0.5).output,
                HasSubstr("\nchannel 10 (drums) is left out; --channel 10=PROGRAM plays it\n"));
    const auto off = run(withDrums(), 0.5, {"--channel", "10=off"});
    EXPECT_THAT(off.output, Not(HasSubstr("drums")));
    const auto asked = run(withDrums(), 0.5, {"--channel", "10=0"});
    EXPECT_THAT(asked.output, Not(HasSubstr("drums")));
    EXPECT_TRUE(readSoundFile(folder_ / "out.wav").channel(0) != expected);
}

TEST_F(GeneralMidi, ChannelsThatAreOffAreSilent) {
    Score alone;
    alone.at(0.0, {0x90, kA4, 100});
    const Samples expected = play(alone, 0.5);
    Score both;
    both.at(0.0, {0x90, kA4, 100}).at(0.0, {0x91, kE4, 100});
    EXPECT_TRUE(play(both, 0.5, {"--channel", "2=off"}) == expected);
    EXPECT_EQ(peakBetween(play(alone, 0.5, {"--channel", "1=off"}), 0.0, 0.5), 0.0F);
}

TEST_F(GeneralMidi, RawFileReachesOneInstrumentAsItIs) {
    Score score;
    score.at(0.0, {0xB0, 7, 1}).at(0.0, {0xE5, 0, 96}).at(0.0, {0x90, kA4, 100});
    const Samples samples = play(score, 2.6, {"--raw"});
    // Half the wheel of any channel is half an octave: 600 cents. No volume.
    const double hertz = 440.0 * std::exp2(0.5);
    EXPECT_NEAR(centsFrom(pitchOf(samples, hertz, 0.3), hertz), 0.0, 0.1);
    EXPECT_GT(peakBetween(samples, 0.3, 2.6), 0.1F);
    EXPECT_THAT(run(withDrums(), 0.5, {"--raw"}).output, Not(HasSubstr("drums")));
}

TEST_F(GeneralMidi, SongOfOneChannelWithoutControllersIsTheSameRaw) {
    Score score;
    for (int i = 0; i < 40; ++i) {
        score.at(0.025 * i, {i % 2 == 0 ? 0x94 : 0x84, 40 + i / 2, 100});
    }
    for (const char* block : {"64", "512", "4096"}) {
        const Samples plain = play(score, 1.2, {"--block", block});
        EXPECT_TRUE(plain == play(score, 1.2, {"--block", block, "--raw"})) << block;
    }
}

// The programmed instrument's levels: Low 0.125, High 0.5, High Low 0.25.
class ProgramChanges : public ::testing::Test {
protected:
    ProgramChanges() {
        Score score;
        score.at(0.0, {0x90, 60, 64})
            .at(0.1, {0xC0, 40})
            .at(0.1, {0x90, 60, 64})
            .at(0.2, {0xC0, 5})
            .at(0.2, {0x90, 60, 64});
        writeBytes(folder_ / "song.mid", score.file(0.3));
        writeText(folder_ / "map.csv",
                  "change, program\n# strings\n40-47, High\n127, 0\n5, high low\n");
    }

    ProgramResult render(const Words& more) const {
        Words words{"render",
                    (folder_ / "song.mid").string(),
                    "-o",
                    "--format",
                    "float",
                    "--tail",
                    "0",
                    "--rate",
                    "8000",
                    "--plugin",
                    testPlugin("programmed")};
        words.insert(words.begin() + 3, (folder_ / "out.wav").string());
        words.insert(words.end(), more.begin(), more.end());
        return zelvatoneWith(words);
    }
    // The left samples of the three notes.
    Samples notes(const Words& more) const {
        EXPECT_EQ(render(more).errors, "");
        const Samples left = readSoundFile(folder_ / "out.wav").channel(0);
        return {left.at(0), left.at(800), left.at(1600)};
    }
    std::string map() const { return (folder_ / "map.csv").string(); }

    const TemporaryFolder folder_;
};

TEST_F(ProgramChanges, ChooseNothingWithoutAMap) {
    EXPECT_THAT(notes({}), ElementsAre(0.125F, 0.125F, 0.125F));
}

TEST_F(ProgramChanges, ChooseTheProgramsOfTheMap) {
    EXPECT_THAT(notes({"--programs", map()}), ElementsAre(0.125F, 0.5F, 0.25F));
}

TEST_F(ProgramChanges, LeaveANamedChannelItsProgram) {
    EXPECT_THAT(notes({"--programs", map(), "--channel", "1=High"}), ElementsAre(0.5F, 0.5F, 0.5F));
}

TEST_F(ProgramChanges, KeepSettings) {
    EXPECT_THAT(notes({"--programs", map(), "--set", "Level=0.75"}),
                ElementsAre(0.75F, 0.75F, 0.75F));
}

// A preset on a channel before them renames the program that it takes the place of.
TEST_F(ProgramChanges, FindTheirProgramsBesideAChannelWithAPreset) {
    const std::string preset = (folder_ / "lead.fxp").string();
    EXPECT_EQ(zelvatoneWith({"preset", "save", preset, "--name", "Lead", "--plugin",
                             testPlugin("programmed")})
                  .errors,
              "");
    Score score;
    score.at(0.0, {0x90, 60, 64}).at(0.0, {0xC1, 7}).at(0.0, {0x91, 60, 64});
    writeBytes(folder_ / "song.mid", score.file(0.3));
    writeText(folder_ / "map.csv", "7, Low\n");
    EXPECT_EQ(render({"--programs", map(), "--channel", "1=" + preset}).errors, "");
}

TEST_F(ProgramChanges, RefuseABadMap) {
    const auto errorOf = [&](const std::string& text) {
        writeText(folder_ / "map.csv", text);
        const auto result = render({"--programs", map()});
        EXPECT_EQ(result.exitStatus, 1) << text;
        return result.errors;
    };
    EXPECT_THAT(errorOf("1, High\n2, none\n"), HasSubstr("map.csv:2: unknown program 'none'"));
    EXPECT_THAT(errorOf("128, High\n"), HasSubstr("map.csv:1: '128' is not a program change"));
    EXPECT_THAT(errorOf("9-7, High\n"), HasSubstr("map.csv:1: '9-7' is not a program change"));
    EXPECT_THAT(errorOf("1, High, 2\n"), HasSubstr("map.csv:1: a line has two fields"));
}

TEST_F(ProgramChanges, NeedAnInstrumentThatIsNotRaw) {
    for (const Words& more :
         {Words{"--raw", "--programs", map()}, Words{"--raw", "--split"},
          Words{"--raw", "--channel", "1=High"}, Words{"--split", "--together"}}) {
        const auto result = render(more);
        EXPECT_EQ(result.exitStatus, 2) << more.back();
        EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1);
    }
}

} // namespace
} // namespace zelvatone
