#include "host/text/Json.h"
#include "tests/support/Program.h"
#include "tests/support/SoundFile.h"
#include "tour/Character.h"
#include "tour/TourPage.h"
#include "tour/TourPhrase.h"

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
using ::testing::IsEmpty;
using ::testing::Not;

TEST(TourPhrase, EndsEveryNoteInTime) {
    const Song song = tourPhrase();
    std::vector<int> sounding(128);
    double before = 0.0;
    for (const SongEvent& event : song.events) {
        EXPECT_GE(event.seconds, before);
        before = event.seconds;
        const auto key = static_cast<std::size_t>(event.bytes[1]);
        sounding[key] += event.bytes[0] == 0x90 ? 1 : -1;
        EXPECT_GE(sounding[key], 0);
    }
    EXPECT_EQ(std::count(sounding.begin(), sounding.end(), 0), 128);
    EXPECT_LT(before, song.seconds);
}

// How names are cleaned is FileNamesTest's.
TEST(StopFile, HoldsTheNumberInAsManyDigitsAsTheLastOneNeeds) {
    EXPECT_EQ(stopFile(7, 42, "Cyborg Pad"), "07-Cyborg-Pad");
    EXPECT_EQ(stopFile(7, 128, "Up/Down"), "007-Up-Down");
    EXPECT_EQ(stopFile(0, 1, ""), "0");
    EXPECT_EQ(stopFile(9, 10, "A"), "9-A");
    EXPECT_EQ(stopFile(9, 11, "A"), "09-A");
}

Tour smallTour() {
    Tour tour;
    tour.instrument = "A & B";
    tour.plugin = "/home/me/synth.so";
    tour.phraseSeconds = 6.0;
    tour.stops.resize(1);
    tour.stops[0].name = "<b>\"Tom & {{file}}\"";
    tour.stops[0].file = "0-tom";
    return tour;
}

TEST(TourPage, ShowsNamesAsTheyAre) {
    const std::string page = tourTexts(smallTour()).at("index.html");
    EXPECT_THAT(page, HasSubstr("<title>A &amp; B: 1 programs</title>"));
    EXPECT_THAT(page, HasSubstr("&lt;b&gt;&quot;Tom &amp; {{file}}&quot;"));
    EXPECT_THAT(page, Not(HasSubstr("<b>\"Tom")));
    EXPECT_THAT(page, HasSubstr("src=\"0-tom.ogg\""));
}

// The browser takes the first source that it plays.
TEST(TourPage, HasFlacForBrowsersWithoutVorbis) {
    const std::string page = tourTexts(smallTour()).at("index.html");
    const std::size_t ogg = page.find("<source src=\"0-tom.ogg\"");
    ASSERT_NE(ogg, std::string::npos);
    EXPECT_NE(page.find("<source src=\"0-tom.flac\" type=\"audio/flac\">", ogg), std::string::npos);
}

TEST(TourPage, NeedsNothingFromElsewhere) {
    for (const TourTexts& texts : {tourTexts(smallTour()), siteTexts(smallTour())}) {
        for (const auto& [name, text] : texts) {
            for (const char* outside : {"http:", "https:", "//", "@import", "url(", "=\"/"}) {
                // The script's comments begin with two slashes and a space.
                std::size_t at = text.find(outside);
                while (at != std::string::npos && text.substr(at, 3) == "// ") {
                    at = text.find(outside, at + 1);
                }
                EXPECT_TRUE(at == std::string::npos || name == "programs.json")
                    << name << ": " << outside;
            }
        }
    }
}

TEST(TourSite, HasStyleAndScriptInFilesOfTheirOwn) {
    const TourTexts texts = siteTexts(smallTour());
    const std::string& page = texts.at("index.html");
    EXPECT_THAT(page, HasSubstr("href=\"style.css\""));
    EXPECT_THAT(page, HasSubstr("src=\"script.js\""));
    EXPECT_THAT(page, Not(HasSubstr("<style")));
    EXPECT_EQ(texts.at("style.css"), readText(TEST_PAGE "style.css"));
    EXPECT_EQ(texts.at("script.js"), readText(TEST_PAGE "script.js"));
}

TEST(TourSite, LinksEveryProgramToAPageWithKeys) {
    Tour tour = smallTour();
    EXPECT_THAT(siteTexts(tour).at("index.html"), Not(HasSubstr("#program=")));
    tour.keys = "../?a&b";
    tour.stops[0].number = 12;
    EXPECT_THAT(siteTexts(tour).at("index.html"), HasSubstr("href=\"../?a&amp;b#program=12\""));
}

TEST(TourSite, TellsNoFolderOfThisMachine) {
    for (const auto& [name, text] : siteTexts(smallTour())) {
        EXPECT_THAT(text, Not(HasSubstr("/home"))) << name;
    }
    EXPECT_THAT(siteTexts(smallTour()).at("index.html"), HasSubstr("--plugin synth.so"));
    EXPECT_THAT(tourTexts(smallTour()).at("index.html"), HasSubstr("--plugin /home/me/synth.so"));
}

TEST(TourData, HoldsTagsLevelsAndFilesOfEachProgram) {
    Tour tour = smallTour();
    tour.stops[0].peakDecibels = -1.234;
    tour.stops[0].dcOffset = -0.0004;
    tour.stops[0].measures.isSilent = false;
    tour.stops[0].measures.strongestShare = 1.0;
    const auto json = nlohmann::json::parse(tourTexts(tour).at("programs.json"));
    const auto& program = json.at("programs").at(0);
    EXPECT_EQ(program.at("name"), "<b>\"Tom & {{file}}\"");
    EXPECT_EQ(program.at("peakDecibels"), -1.23);
    EXPECT_EQ(program.at("dcOffset"), 0.0);
    EXPECT_EQ(program.at("files").at("preset"), "0-tom.fxp");
    EXPECT_THAT(program.at("tags"), ::testing::Contains("pure"));
    EXPECT_EQ(json.at("tags").size(), characterTags().size());
}

class TourCommand : public ::testing::Test {
protected:
    ProgramResult tour(const std::vector<std::string>& more = {},
                       const std::string& kind = "-o") const {
        std::vector<std::string> arguments{"tour", kind, target_.string(), "--plugin",
                                           testPlugin("programmed")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return zelvatoneWith(arguments);
    }

    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(target_)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    // The instrument puts the same single samples into both outputs: one channel is enough, and the
    // true peak is what limits them.
    void expectSounds() const {
        for (const char* name : {"1-High.ogg", "1-High.flac"}) {
            const SoundFile sound = readSoundFile(target_ / name);
            EXPECT_EQ(sound.sampleRate, 44100) << name;
            EXPECT_EQ(sound.channels, 1) << name;
            EXPECT_EQ(sound.channel(0).size(), 6U * 44100U) << name;
        }
        const auto samples = readSoundFile(target_ / "1-High.flac").channel(0);
        EXPECT_NEAR(20.0 * std::log10(*std::ranges::max_element(samples)), -1.0, 0.5);
    }

    const TemporaryFolder folder_;
    const std::filesystem::path target_ = folder_ / "tour";
};

TEST_F(TourCommand, WritesThePageAndFiveFilesForEachProgram) {
    const auto result = tour();
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_EQ(result.output, (target_ / "index.html").string() + ": 4 programs\n");
    EXPECT_EQ(result.errors, "");
    std::vector<std::string> wanted{"index.html", "programs.json"};
    const std::string page = readText(target_ / "index.html");
    for (const char* stop : {"0-Low", "1-High", "2-High-Low", "3-Up-Down"}) {
        for (const char* end : {".ogg", ".flac", ".fxp", "-spectrum.png", "-wave.png"}) {
            wanted.push_back(stop + std::string(end));
            EXPECT_THAT(page, HasSubstr("=\"" + wanted.back() + "\""));
        }
    }
    EXPECT_THAT(files(), ::testing::UnorderedElementsAreArray(wanted));
    EXPECT_THAT(page, HasSubstr("Up/Down"));
    EXPECT_THAT(page, HasSubstr("Quarter"));
    expectSounds();
    const auto preset = zelvatoneWith({"preset", "load", (target_ / "2-High-Low.fxp").string(),
                                       "--plugin", testPlugin("programmed")});
    EXPECT_EQ(preset.exitStatus, 0) << preset.errors;
    EXPECT_THAT(preset.output, HasSubstr("High Low"));
}

TEST_F(TourCommand, WritesASiteInPlaceOfATour) {
    tour();
    EXPECT_EQ(tour({}, "--site").exitStatus, 0);
    EXPECT_THAT(files(), ::testing::IsSupersetOf({"style.css", "script.js", "1-High.flac"}));
    EXPECT_EQ(tour().exitStatus, 0);
    EXPECT_THAT(files(), Not(::testing::Contains("style.css")));
}

TEST_F(TourCommand, WantsOneFolder) {
    EXPECT_EQ(zelvatoneWith({"tour"}).errors, "zelvatone: --output or --site is required; see "
                                              "'zelvatone tour --help'\n");
    EXPECT_EQ(tour({"--site", "a"}).exitStatus, 2);
}

TEST_F(TourCommand, WritesTheSameOnAnyNumberOfThreadsAndInPlaceOfATour) {
    tour({"--threads", "1"});
    std::vector<std::string> before;
    for (const std::string& name : files()) {
        before.push_back(readText(target_ / name));
    }
    EXPECT_EQ(tour({"--threads", "3", "-q"}).output, "");
    std::vector<std::string> after;
    for (const std::string& name : files()) {
        after.push_back(readText(target_ / name));
    }
    EXPECT_TRUE(before == after);
    EXPECT_THAT(folder_.names(), ElementsAre("tour"));
}

TEST_F(TourCommand, LeavesOtherFoldersAlone) {
    std::filesystem::create_directory(target_);
    writeText(target_ / "index.html", "my page");
    const auto result = tour();
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("there are other files in it"));
    EXPECT_EQ(readText(target_ / "index.html"), "my page");
    std::filesystem::remove(target_ / "index.html");
    tour();
    for (const char* name : {"notes.txt", "mine.fxp"}) {
        writeText(target_ / name, "mine");
        EXPECT_EQ(tour().exitStatus, 1);
        EXPECT_EQ(readText(target_ / name), "mine");
        std::filesystem::remove(target_ / name);
    }
}

TEST_F(TourCommand, RefusesAPlugInThatRendersNothing) {
    const auto result =
        zelvatoneWith({"tour", "-o", target_.string(), "--plugin", testPlugin("effect")});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(folder_.names(), IsEmpty());
}

TEST_F(TourCommand, LeavesNothingWhenItIsStopped) {
    const TemporaryFolder scratch;
    Program program({TEST_PROGRAM, "tour", "-o", target_.string(), "--threads", "2"}, scratch);
    for (int i = 0; i < 1000 && folder_.names().empty(); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    ASSERT_EQ(folder_.names().size(), 1U); // hidden and half done
    kill(program.id(), SIGINT);
    const auto result = program.wait();
    EXPECT_EQ(result.signal, SIGINT);
    EXPECT_EQ(result.output + result.errors, "");
    EXPECT_THAT(folder_.names(), IsEmpty());
}

} // namespace
} // namespace zelvatone
