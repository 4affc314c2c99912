// The editor of zelvatone.clap in a window on Windows.
#include "tests/clap/host/ClapInstance.h"
#include "tests/windows/HostWindow.h"

#include <gtest/gtest.h>

#include <memory>

namespace zelvatone::test {
namespace {

constexpr std::uint32_t kSustain = 20;
constexpr int kKnobX = 452, kKnobY = 421; // its centre

class WindowsClapEditor : public testing::Test {
protected:
    ~WindowsClapEditor() override { gui_.destroy(plugin_); }

    bool open(double scale = 1.0) {
        const clap::Window parent{.api = clap::kWindowWin32, .pointer = window_.handle()};
        const bool isOpen = gui_.create(plugin_, clap::kWindowWin32, false) &&
                            gui_.setScale(plugin_, scale) && gui_.setParent(plugin_, &parent);
        idle();
        return isOpen;
    }
    void idle() {
        HostWindow::pump();
        instance_.fireTimers();
        HostWindow::pump();
    }

    ClapLibrary library_{ZELVATONE_CLAP};
    ClapInstance instance_{library_, "com.quillfeather.zelvatone"};
    const clap::Plugin* plugin_ = &instance_.plugin();
    const clap::PluginGui& gui_ = *instance_.extension<clap::PluginGui>(clap::kGuiId);
    HostWindow window_;
};

TEST_F(WindowsClapEditor, IsAChildOfTheHostsWindowAndGoesAgain) {
    ASSERT_TRUE(open());
    ASSERT_EQ(window_.children(), 1);
    RECT rect{};
    GetClientRect(window_.editor(), &rect);
    EXPECT_EQ(rect.right, 717);
    EXPECT_EQ(rect.bottom, 477);
    gui_.destroy(plugin_);
    idle();
    EXPECT_EQ(window_.children(), 0);
}

TEST_F(WindowsClapEditor, ShowsItsPicturesAtEitherScale) {
    for (const double scale : {1.0, 2.0}) {
        ASSERT_TRUE(open(scale));
        RECT rect{};
        GetClientRect(window_.editor(), &rect);
        EXPECT_EQ(rect.right, 717 * scale);
        // Red is what the frame shows without its background.
        EXPECT_NE(window_.picture().at(3, 3), 0xFF0000U) << scale;
        gui_.destroy(plugin_);
        idle();
    }
}

TEST_F(WindowsClapEditor, DragReachesTheHostAsAGesture) {
    ASSERT_TRUE(open());
    window_.press(kKnobX, kKnobY - 20);
    window_.move(kKnobX - 20, kKnobY);
    window_.release(kKnobX - 20, kKnobY);
    idle();
    OutputList sent;
    const auto* params = instance_.extension<clap::PluginParams>(clap::kParamsId);
    params->flush(plugin_, nullptr, &sent.record());
    ASSERT_GE(sent.events.size(), 3U);
    EXPECT_EQ(sent.events.front().type, clap::kParamGestureBegin);
    EXPECT_EQ(sent.events.back().type, clap::kParamGestureEnd);
    double value = -1.0;
    EXPECT_TRUE(params->getValue(plugin_, kSustain, &value));
    EXPECT_LT(value, 0.5);
    EXPECT_EQ(sent.events[sent.events.size() - 2].value, value);
}

} // namespace
} // namespace zelvatone::test
