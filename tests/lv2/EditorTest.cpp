// The bundle's editor in a host's window: what the user sees, and what the host hears.
#include "lv2/Identity.h"
#include "tests/editor/Face.h"
#include "tests/editor/Waiting.h"
#include "tests/lv2/HostedEditor.h"
#include "tests/vstgui/HostWindow.h"
#include "tests/vstgui/XServer.h"

#include <gmock/gmock.h>

#include <functional>
#include <limits>

namespace zelvatone::test {
namespace {

using testing::ElementsAre;
using VSTGUI::test::HostWindow;

const std::uint32_t kMinModesPort = lv2::portOf(kMinModes);

// A host's window with an editor in it.
struct OpenEditor {
    // `scale` as the host asks for it, with a window that is large enough; 0 for a host that does
    // not ask.
    explicit OpenEditor(float scale = 0)
        : window(VSTGUI::test::Host::kPlain, kWidth * 2, kHeight * 2),
          editor(window.handle(), scale) {}

    // Idles until `isReached`. Returns whether it was, in ten seconds.
    bool idleUntil(const std::function<bool()>& isReached) {
        return zelvatone::test::idleUntil([&] { editor.idle(); }, isReached);
    }
    int frameOf(ParameterIndex index) const { return frameShown(window, index); }
    bool idleUntilFrame(ParameterIndex index, int frame) {
        return idleUntil([&] { return frameOf(index) == frame; });
    }
    bool idleUntilDrawn() {
        return idleUntil([&] { return frameOf(kRelease) != -1; });
    }
    void pressAndDragRight(ParameterIndex index) {
        const Point centre = knobOf(index).centre();
        window.movePointer(centre.x, centre.y - 20);
        window.press();
        window.movePointer(centre.x + 20, centre.y);
    }

    HostWindow window;
    HostedEditor editor; // goes before its window
};

class Lv2Editor : public testing::Test {
protected:
    void SetUp() override {
        if (const std::string why = VSTGUI::test::XServer::start(); !why.empty()) {
            GTEST_SKIP() << why;
        }
    }
};

TEST_F(Lv2Editor, OpensInTheHostsWindowAndTellsItsSize) {
    OpenEditor open;
    ASSERT_TRUE(open.editor.isOpen());
    EXPECT_THAT(open.window.children(), ElementsAre(open.editor.window()));
    EXPECT_TRUE(open.window.isViewable(open.editor.window()));
    EXPECT_EQ(open.editor.askedSize, (HostedEditor::Size{.width = kWidth, .height = kHeight}));
    EXPECT_TRUE(open.idleUntilDrawn());
}

TEST_F(Lv2Editor, OpensAtTwiceTheSizeInAHostThatAsksForIt) {
    OpenEditor open(2);
    EXPECT_EQ(open.editor.askedSize,
              (HostedEditor::Size{.width = 2 * kWidth, .height = 2 * kHeight}));
    // The background reaches the far corner.
    const VSTGUI::test::Pixel corner = readPicture("BACKGROUND.PNG").at(kWidth - 1, kHeight - 1);
    EXPECT_TRUE(open.idleUntil(
        [&] { return open.window.pixel(2 * kWidth - 1, 2 * kHeight - 1) == corner; }));
}

TEST_F(Lv2Editor, HasNothingToOpenInWithoutAWindow) {
    EXPECT_FALSE(HostedEditor(nullptr).isOpen());
}

TEST_F(Lv2Editor, TouchesWritesAndReleasesAPort) {
    OpenEditor open;
    ASSERT_TRUE(open.idleUntilDrawn());
    open.pressAndDragRight(kMinModes);
    ASSERT_TRUE(open.idleUntil([&] { return !open.editor.values.empty(); }));
    open.window.release();
    ASSERT_TRUE(open.idleUntil([&] { return open.editor.lines.back() == "release 6"; }));
    EXPECT_THAT(open.editor.lines, ElementsAre("touch 6", "value 6", "release 6"));
    // From the top to the right is a third of the range: 100 x 5 / 6, rounded down.
    EXPECT_THAT(open.editor.values, ElementsAre(83.0F));
}

TEST_F(Lv2Editor, ShowsWhatThePortSays) {
    OpenEditor open;
    open.editor.sendValue(kMinModesPort, 100);
    EXPECT_TRUE(open.idleUntilFrame(kMinModes, 29));
    open.editor.sendValue(kMinModesPort, 0);
    EXPECT_TRUE(open.idleUntilFrame(kMinModes, 0));
    EXPECT_TRUE(open.editor.lines.empty()) << "what the host tells is not an edit";
}

TEST_F(Lv2Editor, IgnoresWhatIsNotAParameter) {
    OpenEditor open;
    open.editor.sendValue(kMinModesPort, 100);
    ASSERT_TRUE(open.idleUntilFrame(kMinModes, 29));
    open.editor.sendValue(kMinModesPort, 0, 1); // another protocol than a plain float
    open.editor.sendValue(lv2::kLeftPort, 0);
    open.editor.sendValue(lv2::kPortCount, 0);
    open.editor.sendValue(kMinModesPort, std::numeric_limits<float>::quiet_NaN());
    open.editor.idle();
    EXPECT_EQ(open.frameOf(kMinModes), 29);
}

TEST_F(Lv2Editor, LeavesNothingBehindAndOpensAgain) {
    HostWindow window;
    for (int i = 0; i < 3; ++i) {
        {
            const HostedEditor editor(window.handle());
            EXPECT_TRUE(editor.isOpen());
        }
        EXPECT_TRUE(window.children().empty());
    }
}

TEST_F(Lv2Editor, SurvivesTheEndOfTheHostsWindow) {
    OpenEditor open;
    ASSERT_TRUE(open.idleUntilDrawn());
    open.window.destroy();
    open.editor.idle();
}

TEST_F(Lv2Editor, HasValuesOfItsOwnInEachInstance) {
    OpenEditor one;
    OpenEditor other;
    one.editor.sendValue(kMinModesPort, 100);
    other.editor.sendValue(kMinModesPort, 0);
    EXPECT_TRUE(other.idleUntilFrame(kMinModes, 0));
    other.window.hide(); // it lies over the first one
    EXPECT_TRUE(one.idleUntilFrame(kMinModes, 29));
}

TEST_F(Lv2Editor, LeavesKeysToTheHost) {
    OpenEditor open;
    ASSERT_TRUE(open.idleUntilDrawn());
    open.window.takeFocus();
    const Point centre = knobOf(kMinModes).centre();
    open.window.click(centre.x, centre.y);
    open.editor.idle();
    EXPECT_TRUE(open.window.hasFocus());
    open.window.typeKey();
    open.editor.idle();
    EXPECT_GT(open.window.keysHeard(), 0);
}

} // namespace
} // namespace zelvatone::test
