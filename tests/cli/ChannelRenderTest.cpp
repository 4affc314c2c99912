// Songs on several channels, each with an instrument of its own.

#include "tests/support/MidiFileBuilder.h"
#include "tests/support/PresetBytes.h"
#include "tests/support/Program.h"
#include "tests/support/SoundFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Words = std::vector<std::string>;

class ChannelRender : public ::testing::Test {
protected:
    // A note on each of the channels 1, 2 and 11, at 0, 0.25 and 0.5 s.
    ChannelRender() {
        writeBytes(folder_ / "song.mid", midiFileBytes(0, 480,
                                                       {TrackBytes()
                                                            .event(0, {0x90, 60, 64})
                                                            .event(240, {0x91, 64, 64})
                                                            .event(240, {0x9A, 67, 64})
                                                            .end(240)}));
    }

    std::string path(const std::string& name) const { return (folder_ / name).string(); }

    // Renders in floating-point samples into `name`.
    ProgramResult render(const std::string& name, const std::string& plugin,
                         const Words& more) const {
        Words arguments{"render",   path("song.mid"), "-o",       path(name), "-q",
                        "--format", "float",          "--plugin", plugin};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return zelvatoneWith(arguments);
    }

    // The left samples of out.wav at the three notes.
    std::vector<float> notes(const Words& more) const {
        Words words{"--tail", "0"};
        words.insert(words.end(), more.begin(), more.end());
        const auto result = render("out.wav", testPlugin("programmed"), words);
        EXPECT_EQ(result.errors, "");
        const auto left = readSoundFile(folder_ / "out.wav").channel(0);
        return {left.at(0), left.at(11025), left.at(22050)};
    }

    const TemporaryFolder folder_;
};

// The programmed instrument's levels: Low 0.125, High 0.5, High Low 0.25, Up/Down 0.3.
TEST_F(ChannelRender, GivesEachNamedChannelItsProgramAndTheRestTheChosenOne) {
    EXPECT_THAT(notes({}), ElementsAre(0.125F, 0.125F, 0.125F));
    EXPECT_THAT(notes({"--program", "High"}), ElementsAre(0.5F, 0.5F, 0.5F));
    EXPECT_THAT(notes({"--channel", "2=high low"}), ElementsAre(0.125F, 0.25F, 0.125F));
    EXPECT_THAT(notes({"--program", "High", "--channel", "2=High Low", "--channel", "11=0"}),
                ElementsAre(0.5F, 0.25F, 0.125F));
}

TEST_F(ChannelRender, GivesEachChannelItsLevel) {
    const float half = std::pow(10.0F, -6.0F / 20.0F);
    const auto heights = notes({"--channel", "2=High@-6dB", "--gain", "20"});
    EXPECT_FLOAT_EQ(heights[0], 1.25F);
    EXPECT_FLOAT_EQ(heights[1], 5.0F * half);
    EXPECT_FLOAT_EQ(heights[2], 1.25F);
}

TEST_F(ChannelRender, TakesPresetFilesForPrograms) {
    writeBytes(folder_ / "a.fxp", programBytes({.values = {0x3F400000, 0, 0}})); // level 0.75
    EXPECT_THAT(notes({"--channel", "2=" + path("a.fxp")}), ElementsAre(0.125F, 0.75F, 0.125F));
    BankFields fields;
    fields.programs[1] = programBytes({.name = "Loud", .values = {0x3F800000, 0, 0}});
    writeBytes(folder_ / "a.fxb", bankBytes(fields));
    EXPECT_THAT(notes({"--preset", path("a.fxb"), "--channel", "11=loud"}),
                ElementsAre(0.25F, 0.25F, 1.0F));
}

TEST_F(ChannelRender, MovesParametersOfAllInstruments) {
    writeText(folder_ / "moves.csv", "0.2,Level,1\n0.4,Level,0.0625\n");
    EXPECT_THAT(notes({"--automate", path("moves.csv"), "--channel", "11=High"}),
                ElementsAre(0.125F, 1.0F, 0.0625F));
}

// A whole-number parameter comes back one lower when the value that it tells is set again.
TEST_F(ChannelRender, ReadsMovesWithoutMovingTheInstrument) {
    writeText(folder_ / "moves.csv", "0.6,Max Modes,60 osc\n");
    const Words settings{"--set", "Max Modes=53 osc", "--set", "Mode Init=100 osc", "--tail", "0"};
    const auto leftWith = [&](const Words& more) {
        Words words = settings;
        words.insert(words.end(), more.begin(), more.end());
        EXPECT_EQ(render("out.wav", TEST_INSTRUMENT, words).errors, "");
        auto left = readSoundFile(folder_ / "out.wav").channel(0);
        left.resize(22050); // before the move
        return left;
    };
    EXPECT_TRUE(leftWith({"--automate", path("moves.csv")}) == leftWith({}));
}

const Words kOrchestra{"--channel",   "1=Organ@-6dB", "--channel",
                       "2=Lime Bass", "--program",    "Crystal"};

Words orchestra(const Words& more) {
    Words words = kOrchestra;
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

TEST_F(ChannelRender, MakesTheSameFileOnAnyNumberOfThreads) {
    EXPECT_EQ(render("1.wav", TEST_INSTRUMENT, orchestra({"--threads", "1"})).errors, "");
    const std::string reference = readText(folder_ / "1.wav");
    EXPECT_GT(reference.size(), 100000U);
    for (const char* threads : {"2", "3", "8", "auto"}) {
        render("n.wav", TEST_INSTRUMENT, orchestra({"--threads", threads}));
        EXPECT_TRUE(readText(folder_ / "n.wav") == reference) << threads;
    }
}

TEST_F(ChannelRender, WritesStemsThatAddUpToTheMix) {
    EXPECT_EQ(render("mix.wav", TEST_INSTRUMENT, orchestra({"--stems", path("stems")})).errors, "");
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_ / "stems")) {
        names.push_back(entry.path().filename().string());
    }
    std::erase(names, ".stems.json"); // the list of the others
    std::sort(names.begin(), names.end());
    ASSERT_THAT(names, ElementsAre("01-Organ.wav", "02-Lime-Bass.wav", "11-Crystal-Strings.wav"));
    const auto mix = readSoundFile(folder_ / "mix.wav").samples;
    std::vector<float> sum(mix.size(), 0.0F);
    for (const std::string& name : names) { // in the order of the parts
        const auto stem = readSoundFile(folder_ / "stems" / name).samples;
        ASSERT_EQ(stem.size(), sum.size()) << name;
        EXPECT_TRUE(std::any_of(stem.begin(), stem.end(), [](float x) { return x != 0.0F; }));
        std::transform(sum.begin(), sum.end(), stem.begin(), sum.begin(), std::plus<>());
    }
    EXPECT_TRUE(sum == mix);
}

// The mix peaks at 0.5, the stem is 0.3 at the sample that is looked at: twelve decibels below full
// scale halve both.
TEST_F(ChannelRender, BringsStemsToTheLevelOfTheirMix) {
    const Words more{"--normalize", "-12.0412", "--stems",   path("stems"),
                     "--channel",   "2=Up",     "--channel", "1=High"};
    EXPECT_EQ(render("mix.wav", testPlugin("programmed"), more).errors, "");
    const auto mix = readSoundFile(folder_ / "mix.wav").channel(0);
    const auto stem = readSoundFile(folder_ / "stems" / "02-Up-Down.wav").channel(0);
    EXPECT_NEAR(mix.at(0), 0.25F, 1e-6);
    EXPECT_NEAR(stem.at(11025), 0.15F, 1e-6);
    EXPECT_EQ(mix.at(11025), stem.at(11025));
}

TEST_F(ChannelRender, RemovesItsOwnOldStemsAndNoOtherFile) {
    const auto stemsWith = [&](const Words& channels) {
        Words more{"--together", "--stems", path("stems")};
        more.insert(more.end(), channels.begin(), channels.end());
        EXPECT_EQ(render("mix.wav", testPlugin("programmed"), more).errors, "");
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_ / "stems")) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    };
    EXPECT_THAT(stemsWith({"--channel", "1=High", "--channel", "2=Low"}),
                ElementsAre(".stems.json", "01-High.wav", "02-Low.wav", "rest-Low.wav"));
    writeText(folder_ / "stems" / "03-Mine.wav", "not of the tool");
    writeText(folder_ / "stems" / "02-Low.wav", "changed by its owner");
    EXPECT_THAT(
        stemsWith({"--channel", "1=Low"}),
        ElementsAre(".stems.json", "01-Low.wav", "02-Low.wav", "03-Mine.wav", "rest-Low.wav"));
    EXPECT_EQ(readText(folder_ / "stems" / "02-Low.wav"), "changed by its owner");
}

TEST_F(ChannelRender, TakesNoNameFromADamagedListOfStems) {
    writeText(folder_ / "song.wav", "precious");
    std::filesystem::create_directory(folder_ / "stems");
    for (const char* list : {R"([{"name": "../song.wav", "bytes": 8}])", "[{]", "{}", "[1]",
                             R"([{"name": 7, "bytes": 8}])"}) {
        writeText(folder_ / "stems" / ".stems.json", list);
        EXPECT_EQ(render("mix.wav", testPlugin("programmed"), {"--stems", path("stems")}).errors,
                  "")
            << list;
        EXPECT_EQ(readText(folder_ / "song.wav"), "precious");
    }
}

TEST_F(ChannelRender, NamesStemsThatClip) {
    const auto result = zelvatoneWith({"render", path("song.mid"), "-o", path("mix.wav"),
                                       "--plugin", testPlugin("programmed"), "--stems",
                                       path("stems"), "--channel", "1=High", "--gain", "12"});
    EXPECT_THAT(result.output, HasSubstr("/stems/01-High.wav: 2 clipped samples\n"));
    EXPECT_THAT(result.output, HasSubstr("\nnothing clips with --gain 6.0\n"));
}

TEST_F(ChannelRender, WritesOneStemOfASongThatOneInstrumentPlays) {
    render("mix.wav", testPlugin("programmed"), {"--together", "--stems", path("")});
    EXPECT_THAT(folder_.names(), ElementsAre(".stems.json", "mix.wav", "rest-Low.wav", "song.mid"));
    EXPECT_TRUE(readText(folder_ / "mix.wav") == readText(folder_ / "rest-Low.wav"));
}

TEST_F(ChannelRender, LeavesNoFileAndNoFolderWhenItFails) {
    const auto result =
        shellWith(R"(ulimit -f 4; exec "$0" render "$1" -o "$2" --plugin "$3" )"
                  R"(--stems "$4" --channel 1=High --tail 60)",
                  {path("song.mid"), path("out.wav"), testPlugin("programmed"), path("stems")});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("File too large"));
    EXPECT_THAT(folder_.names(), ElementsAre("song.mid"));
}

TEST_F(ChannelRender, NamesAChannelThatPlaysNothing) {
    const auto result =
        render("out.wav", testPlugin("programmed"), {"--channel", "2=High", "--channel", "5=High"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors,
              "zelvatone: channel 5 plays nothing: " + path("song.mid") + " has no note on it\n");
}

TEST_F(ChannelRender, RefusesBadOptionsAndLeavesNoFile) {
    const auto errorWith = [&](const Words& more) {
        const auto result = render("out.wav", testPlugin("programmed"), more);
        EXPECT_THAT(folder_.names(), ElementsAre("moves.csv", "song.mid"));
        return std::to_string(result.exitStatus) + " " + result.errors;
    };
    writeText(folder_ / "moves.csv", "0,Level,1\n1,Level,2\n");
    EXPECT_THAT(errorWith({"--channel", "0=Low"}), HasSubstr("2 zelvatone: --channel takes"));
    EXPECT_THAT(errorWith({"--channel", "1=Low", "--channel", "1=High"}), HasSubstr("2 "));
    EXPECT_THAT(errorWith({"--channel", "1=Lo@loud"}), HasSubstr("2 zelvatone: --channel takes"));
    EXPECT_THAT(errorWith({"--channel", "1=none"}), HasSubstr("1 zelvatone: unknown program"));
    EXPECT_THAT(errorWith({"--channel", "1=none.fxp"}),
                HasSubstr("1 zelvatone: none.fxp: no such"));
    EXPECT_THAT(errorWith({"--threads", "0"}), HasSubstr("2 zelvatone: --threads takes"));
    EXPECT_THAT(errorWith({"--threads", "65"}), HasSubstr("2 zelvatone: --threads takes"));
    EXPECT_THAT(errorWith({"--automate", path("moves.csv")}),
                HasSubstr("moves.csv:2: '2' is not a value from 0 to 1 or as Level shows it\n"));
    EXPECT_THAT(errorWith({"--automate", path("none.csv")}), HasSubstr("none.csv: no such file"));
    EXPECT_THAT(errorWith({"--stems", path("song.mid")}), HasSubstr("1 zelvatone: cannot make"));
    EXPECT_THAT(errorWith({"--stems", path("no/stems")}), HasSubstr("1 zelvatone: cannot make"));
}

} // namespace
} // namespace zelvatone
