#include "tests/support/Program.h"
#include "tests/support/SoundFile.h"
#include "tour/TourPage.h"
#include "tour/TourPhrase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
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

TEST(StopFile, SuitsEveryFileSystemAndAddress) {
    EXPECT_EQ(stopFile(7, 42, "Cyborg Pad"), "07-cyborg-pad");
    EXPECT_EQ(stopFile(7, 128, "  <Ä> & 100%/Ⅱ\n"), "007-100");
    EXPECT_EQ(stopFile(0, 1, "..//"), "0");
    EXPECT_EQ(stopFile(9, 10, ""), "9");
    EXPECT_EQ(stopFile(9, 11, "A"), "09-a");
}

TEST(TourPage, ShowsNamesAsTheyAre) {
    TourStop stop;
    stop.name = "<b>\"Tom & {{file}}\"";
    stop.file = "0-tom";
    const std::string page = tourPage("A & B", 6.0, {stop});
    EXPECT_THAT(page, HasSubstr("<title>A &amp; B: 1 programs</title>"));
    EXPECT_THAT(page, HasSubstr("&lt;b&gt;&quot;Tom &amp; {{file}}&quot;"));
    EXPECT_THAT(page, Not(HasSubstr("<b>\"Tom")));
    EXPECT_THAT(page, HasSubstr("src=\"0-tom.ogg\""));
}

TEST(TourPage, NeedsNothingFromElsewhere) {
    const std::string page = tourPage("Zelvatone", 6.0, {TourStop()});
    for (const char* outside : {"http:", "https:", "//", "@import", "url("}) {
        // The script's comments begin with two slashes and a space.
        std::size_t at = page.find(outside);
        while (at != std::string::npos && page.substr(at, 3) == "// ") {
            at = page.find(outside, at + 1);
        }
        EXPECT_EQ(at, std::string::npos) << outside;
    }
}

class TourCommandTest : public ::testing::Test {
protected:
    ProgramResult tour(const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments{"tour", "-o", target_.string(), "--plugin",
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

    const TemporaryFolder folder_;
    const std::filesystem::path target_ = folder_ / "tour";
};

TEST_F(TourCommandTest, WritesAPageASoundAndTwoPicturesForEachProgram) {
    const auto result = tour();
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_EQ(result.output, (target_ / "index.html").string() + ": 4 programs\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(files(), ElementsAre("0-low-spectrum.png", "0-low-wave.png", "0-low.ogg",
                                     "1-high-spectrum.png", "1-high-wave.png", "1-high.ogg",
                                     "2-high-low-spectrum.png", "2-high-low-wave.png",
                                     "2-high-low.ogg", "3-up-down-spectrum.png",
                                     "3-up-down-wave.png", "3-up-down.ogg", "index.html"));
    const SoundFile sound = readSoundFile(target_ / "1-high.ogg");
    EXPECT_EQ(sound.sampleRate, 44100);
    EXPECT_EQ(sound.channel(0).size(), 6U * 44100U);
    const std::string page = readText(target_ / "index.html");
    for (const char* text : {"Up/Down", "src=\"3-up-down.ogg\"", "src=\"3-up-down-wave.png\"",
                             "src=\"3-up-down-spectrum.png\"", "Quarter"}) {
        EXPECT_THAT(page, HasSubstr(text));
    }
}

TEST_F(TourCommandTest, WritesTheSameOnAnyNumberOfThreadsAndInPlaceOfATour) {
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

TEST_F(TourCommandTest, KeepsItsHandsOffOtherFolders) {
    std::filesystem::create_directory(target_);
    writeText(target_ / "index.html", "my page");
    const auto result = tour();
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("there are other files in it"));
    EXPECT_EQ(readText(target_ / "index.html"), "my page");
    std::filesystem::remove(target_ / "index.html");
    tour();
    writeText(target_ / "notes.txt", "mine");
    EXPECT_EQ(tour().exitStatus, 1);
    EXPECT_EQ(readText(target_ / "notes.txt"), "mine");
}

TEST_F(TourCommandTest, RefusesAPlugInThatRendersNothing) {
    const auto result =
        zelvatoneWith({"tour", "-o", target_.string(), "--plugin", testPlugin("effect")});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(folder_.names(), IsEmpty());
}

TEST_F(TourCommandTest, LeavesNothingWhenItIsStopped) {
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
