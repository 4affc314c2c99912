// `zelvatone edit`: a plug-in's editor on the desktop.

#include "host/preset/PresetReader.h"
#include "tests/support/Desktop.h"
#include "tests/support/Program.h"
#include "tests/vstgui/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <thread>

namespace zelvatone {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Words = std::vector<std::string>;

class EditCommand : public ::testing::Test {
protected:
    void SetUp() override {
        if (const std::string why = VSTGUI::test::XServer::start(); !why.empty()) {
            GTEST_SKIP() << why;
        }
        desktop = std::make_unique<Desktop>();
    }

    Program start(Words options) {
        options.insert(options.begin(), {TEST_PROGRAM, "edit"});
        return {options, folder};
    }
    // Its editor is open inside it, and has had some turns.
    xcb_window_t openWindow(const std::string& title) {
        const xcb_window_t window = desktop->windowCalled(title);
        desktop->windowInside(window);
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        return window;
    }
    std::string path(const std::string& name) const { return (folder / name).string(); }

    const TemporaryFolder folder;
    std::unique_ptr<Desktop> desktop;
};

TEST_F(EditCommand, OpensAWindowOfTheEditorsSizeThatTheUserCanClose) {
    Program program = start({"--program", "organ"});
    const xcb_window_t window = openWindow("Organ - Zelvatone");
    desktop->waitForSize(window, 717, 477);
    const auto sizes = desktop->sizes(window);
    EXPECT_THAT(sizes.smallest, ::testing::ElementsAre(717, 477));
    EXPECT_THAT(sizes.largest, ::testing::ElementsAre(717, 477));
    desktop->clickCloseButton(window);
    const ProgramResult result = program.wait();
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output + result.errors, "");
}

// The knob called Attack is turned from its lower left, where it stands at 0, over its left to its
// top, which is the middle of its range.
TEST_F(EditCommand, PrintsAMoveOfAKnobAndSavesIt) {
    Program program =
        start({"--set", "Attack=0", "--verbose", "--save", path("edited.fxp"), "--program", "0"});
    const xcb_window_t window = openWindow("Default - Zelvatone");
    desktop->drag({{310, 431}, {302, 425}, {302, 416}, {308, 408}, {320, 404}});
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    desktop->clickCloseButton(window);
    const ProgramResult result = program.wait();
    ASSERT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_THAT(result.output, StartsWith("Attack: begin\nAttack 0."));
    EXPECT_THAT(result.output, HasSubstr(" s)\nAttack: end\n"));
    EXPECT_THAT(result.output,
                EndsWith(path("edited.fxp") + ": program 'Default', 23 parameters\n"));
    const float attack = readPreset(path("edited.fxp")).programs.at(0).values.at(18);
    EXPECT_NEAR(attack, 0.5F, 0.02F);
}

TEST_F(EditCommand, MakesItsWindowAsLargeAsTheEditorAsks) {
    Program program = start({"--verbose", "--plugin", testPlugin("blank")});
    const xcb_window_t window = desktop->windowCalled("blank");
    desktop->waitForSize(window, 320, 200);
    desktop->clickCloseButton(window);
    const ProgramResult result = program.wait();
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_EQ(result.output, "unknown parameter -1\n"
                             "unknown parameter 1\n");
}

TEST_F(EditCommand, EndsWhenItsWindowIsDestroyed) {
    Program program = start({});
    desktop->destroy(openWindow("Default - Zelvatone"));
    EXPECT_EQ(program.wait().exitStatus, 0);
}

TEST_F(EditCommand, EndsByTheSignalThatStopsIt) {
    Program program = start({});
    openWindow("Default - Zelvatone");
    kill(program.id(), SIGTERM);
    EXPECT_EQ(program.wait().signal, SIGTERM);
}

TEST_F(EditCommand, GivesAOneLineMessageForBadInput) {
    const auto expectError = [](const Words& options, int status, const std::string& line) {
        Words arguments{"edit"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ProgramResult result = zelvatoneWith(arguments);
        EXPECT_EQ(result.exitStatus, status);
        EXPECT_EQ(result.errors, "zelvatone: " + line + "\n");
    };
    const std::string effect = testPlugin("effect");
    expectError({"--plugin", effect}, 1, effect + " has no editor");
    expectError({"--save", "a.wav"}, 2,
                "cannot tell what to save in 'a.wav': end its name in .fxp for a program or .fxb "
                "for the bank");
}

TEST(EditCommandWithoutDisplay, SaysThatThereIsNone) {
    EXPECT_EQ(shellWith("DISPLAY= \"$0\" edit", {}).errors,
              "zelvatone: there is no display to open the editor on: DISPLAY is not set\n");
    const auto result = shellWith("DISPLAY=:987654 \"$0\" edit", {});
    EXPECT_EQ(result.errors, "zelvatone: cannot open the display :987654\n");
    EXPECT_EQ(result.exitStatus, 1);
}

} // namespace
} // namespace zelvatone
