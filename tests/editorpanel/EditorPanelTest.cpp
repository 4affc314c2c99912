#include "editorpanel/EditorPanel.h"

#include "tests/editor/Face.h"
#include "tests/editor/Waiting.h"
#include "tests/vstgui/HostWindow.h"
#include "tests/vstgui/XServer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace zelvatone::test {

namespace {

using VSTGUI::test::HostWindow;

// Writes down what the user does: "begin 2", "value 2", "end 2".
class EditLog final : public EditorListener {
public:
    void editBegins(ParameterIndex index) override { note("begin", index); }
    void valueEdited(ParameterIndex index, float value) override {
        note("value", index);
        values.push_back(value);
        if (onValue) {
            onValue();
        }
    }
    void editEnds(ParameterIndex index) override { note("end", index); }

    std::vector<std::string> lines;
    std::vector<float> values;
    std::function<void()> onValue;

private:
    void note(const char* what, ParameterIndex index) {
        lines.push_back(std::string(what) + ' ' + std::to_string(index));
    }
};

class EditorPanelTest : public testing::Test {
protected:
    void SetUp() override {
        if (const std::string why = VSTGUI::test::XServer::start(); !why.empty()) {
            GTEST_SKIP() << why;
        }
        window_ = std::make_unique<HostWindow>();
    }

    bool idleUntil(EditorPanel& panel, const std::function<bool()>& isReached) {
        return zelvatone::test::idleUntil([&] { panel.idle(); }, isReached);
    }
    bool open(EditorPanel& panel) {
        panel.open(window_->handle());
        return idleUntil(panel, [this] { return frameOf(kRelease) != -1; });
    }
    int frameOf(ParameterIndex index) const { return frameShown(*window_, index); }
    void dragRight(ParameterIndex index) {
        const Point centre = knobOf(index).centre();
        window_->movePointer(centre.x, centre.y - 20);
        window_->press();
        window_->movePointer(centre.x + 20, centre.y);
    }

    std::unique_ptr<HostWindow> window_;
    EditLog log_;
};

TEST_F(EditorPanelTest, ValueIsShownWhetherTheWindowIsOpenOrNot) {
    EditorPanel panel(log_);
    panel.show(kMinModes, 100.0F);
    ASSERT_TRUE(open(panel));
    EXPECT_TRUE(idleUntil(panel, [this] { return frameOf(kMinModes) == 29; }));
    panel.show(kMinModes, 0.0F);
    EXPECT_TRUE(idleUntil(panel, [this] { return frameOf(kMinModes) == 0; }));
    EXPECT_TRUE(log_.lines.empty()) << "what the owner shows is not an edit";
}

TEST_F(EditorPanelTest, DragIsOneGestureWithValuesInUnits) {
    EditorPanel panel(log_);
    ASSERT_TRUE(open(panel));
    dragRight(kMinModes);
    ASSERT_TRUE(idleUntil(panel, [this] { return !log_.values.empty(); }));
    window_->release();
    ASSERT_TRUE(idleUntil(panel, [this] { return log_.lines.back() == "end 2"; }));
    EXPECT_EQ(log_.lines.front(), "begin 2");
    const float last = log_.values.back();
    EXPECT_EQ(last, std::floor(last));
    EXPECT_GT(last, 50.0F);
}

TEST_F(EditorPanelTest, HeldKnobKeepsItsValueAndTakesTheLastOneAfterwards) {
    EditorPanel panel(log_);
    ASSERT_TRUE(open(panel));
    dragRight(kMinModes);
    ASSERT_TRUE(idleUntil(panel, [this] { return !log_.values.empty(); }));
    const int held = frameOf(kMinModes);
    panel.show(kMinModes, 0.0F);
    panel.idle();
    EXPECT_EQ(frameOf(kMinModes), held);
    window_->release();
    EXPECT_TRUE(idleUntil(panel, [this] { return frameOf(kMinModes) == 0; }));
}

TEST_F(EditorPanelTest, ClosingDuringADragEndsTheGesture) {
    EditorPanel panel(log_);
    ASSERT_TRUE(open(panel));
    dragRight(kChop);
    log_.onValue = [&panel] { panel.close(); };
    ASSERT_TRUE(idleUntil(panel, [&panel] { return !panel.isOpen(); }));
    EXPECT_EQ(log_.lines.back(), "end 8");
    log_.onValue = nullptr;
    EXPECT_TRUE(open(panel));
}

TEST_F(EditorPanelTest, TwoPanelsHaveValuesOfTheirOwn) {
    EditorPanel one(log_);
    EditorPanel other(log_);
    one.show(kMinModes, 100.0F);
    ASSERT_TRUE(open(other));
    EXPECT_EQ(frameOf(kMinModes), 0); // 2 of 100
    other.close();
    ASSERT_TRUE(open(one));
    EXPECT_EQ(frameOf(kMinModes), 29);
}

TEST(EditorPanelSize, IsThatOfTheFace) {
    EditLog log;
    const EditorPanel panel(log);
    EXPECT_EQ(panel.size().width, 717);
    EXPECT_EQ(panel.size().height, 477);
}

TEST(EditorPanelSize, FollowsTheScaleInQuarters) {
    EditLog log;
    EditorPanel panel(log);
    panel.setScale(1.97);
    EXPECT_EQ(panel.size().width, 1434);
    EXPECT_EQ(panel.size().height, 954);
}

} // namespace

} // namespace zelvatone::test
