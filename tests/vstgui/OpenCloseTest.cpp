// Nothing is left behind, however often a frame is opened and closed.
#include "tests/vstgui/Fixtures.h"

#include <filesystem>

namespace VSTGUI::test {
namespace {

std::ptrdiff_t openFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return std::distance(begin(files), end(files));
}

class OpenClose : public WindowTest {
protected:
    // Opens, draws, and closes a frame with a knob and a label.
    void round(HostWindow& host) {
        CFrame* frame = openFrame(host);
        CAnimKnob* knob = addKnob(*frame);
        auto* label = new CTextLabel(CRect(276, 86, 364, 106), "Mode Shift");
        label->setTransparency(true);
        frame->addView(label);
        knob->setValue(1.F);
        label->setText("a text that is too long for a string's own room");
        ASSERT_TRUE(isDrawn(*frame, host, 320, 130, stripColor(29)));
        frame->close();
    }
};

class OpenCloseAgain : public OpenClose, public testing::WithParamInterface<bool> {};

// With and without an end and a start of the toolkit after each closing. The leak sanitizer
// watches the memory.
TEST_P(OpenCloseAgain, LeavesNoWindowAndNoOpenFile) {
    HostWindow host;
    const auto once = [&] {
        round(host);
        if (GetParam()) {
            exit();
            init(nullptr);
        }
    };
    once(); // the font machinery opens files of its own at the first text, and keeps them
    const auto filesBefore = openFiles();
    constexpr int kRounds = 200;
    for (int count = 0; count < kRounds; ++count) {
        once();
        ASSERT_TRUE(host.children().empty());
    }
    EXPECT_EQ(openFiles(), filesBefore);
}

INSTANTIATE_TEST_SUITE_P(ToolkitRestarts, OpenCloseAgain, testing::Bool());

} // namespace
} // namespace VSTGUI::test
