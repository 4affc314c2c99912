// `zelvatone screenshot`: a picture of a plug-in's editor.

#include "tests/editor/Face.h"
#include "tests/support/Program.h"
#include "tests/vstgui/XServer.h"

#include <png.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

namespace zelvatone {
namespace {

using ::testing::HasSubstr;
using Words = std::vector<std::string>;

test::Screenshot readPng(const std::filesystem::path& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    EXPECT_NE(png_image_begin_read_from_file(&image, path.c_str()), 0) << image.message;
    EXPECT_EQ(image.format & PNG_FORMAT_FLAG_ALPHA, 0U);
    image.format = PNG_FORMAT_RGB;
    std::vector<std::uint8_t> bytes(PNG_IMAGE_SIZE(image));
    EXPECT_NE(png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr), 0);
    test::Screenshot shot{static_cast<int>(image.width), static_cast<int>(image.height), {}};
    for (std::size_t i = 0; i + 2 < bytes.size(); i += 3) {
        shot.pixels.push_back(bytes[i] << 16 | bytes[i + 1] << 8 | bytes[i + 2]);
    }
    return shot;
}

class ScreenshotCommand : public ::testing::Test {
protected:
    void SetUp() override {
        if (const std::string why = VSTGUI::test::XServer::start(); !why.empty()) {
            GTEST_SKIP() << why;
        }
    }

    std::string path(const std::string& name) const { return (folder / name).string(); }

    test::Screenshot screenshot(Words options) const {
        options.insert(options.begin(), {"screenshot", "-o", path("a.png")});
        const ProgramResult result = zelvatoneWith(options);
        EXPECT_EQ(result.exitStatus, 0) << result.errors;
        EXPECT_EQ(result.output, path("a.png") + ": 717 x 477 pixels\n");
        return readPng(path("a.png"));
    }

    const TemporaryFolder folder;
};

// Of the knob strip's 30 pictures, 0 shows the first and 1 the last.
TEST_F(ScreenshotCommand, ShowsTheEditorAsTheParametersAreSet) {
    const test::Screenshot shot = screenshot({"--set", "Attack=1", "--set", "Release=0"});
    const auto expectFrame = [&](int parameter, int frame) {
        const test::Knob& knob = test::knobOf(parameter);
        EXPECT_TRUE(test::areAlike(cutOut(shot, knob.area()), test::knobPicture(knob, frame), 2))
            << parameter;
    };
    expectFrame(18, 29);
    expectFrame(21, 0);
}

TEST_F(ScreenshotCommand, ShowsTheProgram) {
    EXPECT_FALSE(
        test::areAlike(screenshot({"--program", "Organ"}), screenshot({"--program", "0"}), 2));
}

TEST_F(ScreenshotCommand, ShowsTheIndexOfTheHelpAndItsPages) {
    EXPECT_TRUE(
        test::areAlike(screenshot({"--help-page", "0"}), test::readPicture("HELPOVERLAY.PNG"), 2));
    for (const std::string page : {"1", "2", "3", "4", "5"}) {
        EXPECT_TRUE(test::areAlike(screenshot({"--help-page", page}),
                                   test::readPicture("HELP" + page + ".PNG"), 2))
            << page;
    }
}

TEST_F(ScreenshotCommand, StartsADisplayWhereThereIsNoneAndLeavesNothingOfIt) {
    // Takes the server's place, writes down which process it is, and becomes it.
    writeText(folder / "Xvfb", "#!/bin/sh\necho $$ > \"$(dirname \"$0\")/server\"\n"
                               "PATH=${PATH#*:} exec Xvfb \"$@\"\n");
    std::filesystem::permissions(folder / "Xvfb", std::filesystem::perms::owner_all);
    const auto result = shellWith("PATH=$1:$PATH; unset DISPLAY; export PATH\n"
                                  "\"$0\" screenshot -o \"$1/a.png\"",
                                  {folder.path().string()});
    ASSERT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_EQ(readPng(folder / "a.png").width, 717);
    const int server = std::stoi(readText(folder / "server"));
    EXPECT_NE(kill(server, 0), 0);
}

TEST_F(ScreenshotCommand, GivesAOneLineMessageForBadInputAndWritesNoFile) {
    const auto expectError = [&](Words options, int status, const std::string& text) {
        options.insert(options.begin(), {"screenshot", "-o", path("none.png")});
        const ProgramResult result = zelvatoneWith(options);
        EXPECT_EQ(result.exitStatus, status);
        EXPECT_THAT(result.errors, HasSubstr(text));
        EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
        EXPECT_FALSE(std::filesystem::exists(path("none.png")));
    };
    const std::string effect = testPlugin("effect");
    const std::string blank = testPlugin("blank");
    expectError({"--plugin", effect}, 1, effect + " has no editor");
    expectError({"--plugin", blank}, 1, blank + " draws nothing in its editor");
    expectError({"--plugin", blank, "--help-page", "1"}, 1,
                "--help-page knows the editor of Zelvatone only, not that of " + blank);
    expectError({"--help-page", "6"}, 2, "--help-page takes a whole number from 0 to 5, not '6'");
    expectError({"--program", "Orgam"}, 1, "Organ");
}

TEST_F(ScreenshotCommand, NamesAFileThatItCannotWrite) {
    const auto result = zelvatoneWith({"screenshot", "-o", path("no/a.png")});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr(path("no/a.png")));
}

TEST(ScreenshotWithoutDisplay, NamesTheProgramThatItLacks) {
    const auto result = shellWith("PATH=/nowhere DISPLAY= \"$0\" screenshot -o a.png", {});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.errors, "zelvatone: there is no display to open the editor on: DISPLAY is "
                             "not set, and Xvfb is not installed\n");
}

} // namespace
} // namespace zelvatone
