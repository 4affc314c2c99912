// The user turns knobs: what the host hears, and what the user sees.
#include "tests/editor/EditorFixture.h"

#include <gmock/gmock.h>

#include <ostream>

namespace zelvatone::test {

void PrintTo(const HostCall& call, std::ostream* out) {
    *out << "call " << call.opcode << " for " << call.parameter << " with " << call.value;
}

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::FloatNear;

auto isBegin(int parameter) {
    return AllOf(Field(&HostCall::opcode, audioMasterBeginEdit),
                 Field(&HostCall::parameter, parameter));
}

auto isEnd(int parameter) {
    return AllOf(Field(&HostCall::opcode, audioMasterEndEdit),
                 Field(&HostCall::parameter, parameter));
}

auto isValue(int parameter, float value) {
    return AllOf(Field(&HostCall::opcode, audioMasterAutomate),
                 Field(&HostCall::parameter, parameter),
                 Field(&HostCall::value, FloatNear(value, 1e-6F)));
}

class EveryEditorKnob : public EditorTest, public testing::WithParamInterface<Knob> {
protected:
    void SetUp() override {
        EditorTest::SetUp();
        if (!IsSkipped()) {
            ASSERT_TRUE(openEditor());
            plugin->setParameter(parameter, 0.5F);
            ASSERT_TRUE(idleUntilFrame(parameter, 14));
        }
    }

    bool idleUntilEnd() {
        return idleUntil([&] { return !plugin->callsOf(audioMasterEndEdit).empty(); });
    }

    const int parameter = GetParam().parameter;
    const Point centre = GetParam().centre();
};

// To the right of the centre is a quarter of a turn from the top: a third of the range.
constexpr float kRight = 0.8333333F;

TEST_P(EveryEditorKnob, TurnsWithADragAndTellsOneGesture) {
    window->movePointer(centre.x, centre.y - 20);
    window->press();
    window->movePointer(centre.x + 20, centre.y);
    window->release();
    EXPECT_TRUE(idleUntilEnd());
    EXPECT_THAT(plugin->calls,
                ElementsAre(isBegin(parameter), isValue(parameter, kRight), isEnd(parameter)));
    EXPECT_TRUE(idleUntilFrame(parameter, 24)); // 0.8333 of 29 steps
}

TEST_P(EveryEditorKnob, ShowsTheTextOfItsNewValueAtOnce) {
    window->movePointer(centre.x, centre.y - 20);
    window->press();
    window->movePointer(centre.x + 20, centre.y);
    window->release();
    EXPECT_TRUE(idleUntilEnd());
    idleAWhile();
    const Screenshot shown = displayOf(parameter);
    EXPECT_TRUE(areAlike(freshDisplayOf(parameter), shown));
}

TEST_P(EveryEditorKnob, TurnsWithTheWheelAndTellsOneGesture) {
    window->movePointer(centre.x, centre.y);
    for (const int wheel : {4, 4, 5}) {
        window->press(wheel);
        window->release(wheel);
    }
    EXPECT_TRUE(idleUntilEnd());
    EXPECT_THAT(plugin->calls,
                ElementsAre(isBegin(parameter), isValue(parameter, 0.6F), isValue(parameter, 0.7F),
                            isValue(parameter, 0.6F), isEnd(parameter)));
    EXPECT_TRUE(idleUntilFrame(parameter, 17)); // 0.6 of 29 steps
}

INSTANTIATE_TEST_SUITE_P(Of, EveryEditorKnob, testing::ValuesIn(kAllKnobs), [](const auto& knob) {
    return "Parameter" + std::to_string(knob.param.parameter);
});

constexpr int kSustain = 20;

class EditorKnob : public EditorTest {
protected:
    void SetUp() override {
        EditorTest::SetUp();
        if (!IsSkipped()) {
            ASSERT_TRUE(openEditor());
        }
    }

    const Point centre = knobOf(kSustain).centre();
};

TEST_F(EditorKnob, ShowsHalfAsFiftyPercent) {
    window->movePointer(centre.x + 20, centre.y);
    window->press();
    window->movePointer(centre.x, centre.y - 20);
    window->release();
    EXPECT_TRUE(idleUntilFrame(kSustain, 14));
    EXPECT_EQ(plugin->parameter(kSustain), 0.5F);
    EXPECT_EQ(plugin->parameterDisplay(kSustain), "50%");
}

TEST_F(EditorKnob, FollowsADragThatLeavesTheWindow) {
    window->movePointer(centre.x, centre.y - 20);
    window->press();
    window->movePointer(centre.x, -100); // straight up: half
    EXPECT_TRUE(idleUntilFrame(kSustain, 14));
    window->movePointer(800, centre.y); // straight right
    EXPECT_TRUE(idleUntilFrame(kSustain, 24));
    window->release();
    idleAWhile();
    EXPECT_EQ(plugin->callsOf(audioMasterBeginEdit).size(), 1U);
    EXPECT_EQ(plugin->callsOf(audioMasterEndEdit).size(), 1U);
    window->movePointer(centre.x, centre.y - 20);
    idleAWhile();
    EXPECT_EQ(frameOf(kSustain), 24);
}

TEST_F(EditorKnob, GoesToItsMiddleWithCtrlAndAClick) {
    plugin->setParameter(kSustain, 1.F);
    window->holdControl(true);
    window->click(centre.x, centre.y);
    window->holdControl(false);
    EXPECT_TRUE(idleUntilFrame(kSustain, 14));
    EXPECT_THAT(plugin->calls,
                ElementsAre(isBegin(kSustain), isValue(kSustain, 0.5F), isEnd(kSustain)));
}

TEST_F(EditorKnob, TellsOneGestureOfALongDrag) {
    window->movePointer(centre.x, centre.y - 20);
    window->press();
    for (int x = 0; x < 20; ++x) {
        window->movePointer(centre.x + x, centre.y - 20);
        plugin->idle();
    }
    window->release();
    EXPECT_TRUE(idleUntil([&] { return !plugin->callsOf(audioMasterEndEdit).empty(); }));
    EXPECT_EQ(plugin->callsOf(audioMasterBeginEdit).size(), 1U);
    EXPECT_EQ(plugin->callsOf(audioMasterEndEdit).size(), 1U);
    EXPECT_EQ(plugin->calls.front().opcode, audioMasterBeginEdit);
    EXPECT_EQ(plugin->calls.back().opcode, audioMasterEndEdit);
    EXPECT_GE(plugin->callsOf(audioMasterAutomate).size(), 10U);
}

TEST_F(EditorKnob, IgnoresTheRightButton) {
    window->movePointer(centre.x, centre.y - 20);
    window->press(3);
    window->movePointer(centre.x + 20, centre.y);
    window->release(3);
    idleAWhile();
    EXPECT_TRUE(plugin->calls.empty());
}

TEST_F(EditorKnob, LetsGoWhenAnotherButtonIsPressed) {
    window->movePointer(centre.x, centre.y - 20);
    window->press();
    window->movePointer(centre.x + 20, centre.y);
    window->press(3);
    window->movePointer(centre.x - 20, centre.y);
    window->release(3);
    window->release();
    idleAWhile();
    EXPECT_THAT(plugin->calls,
                ElementsAre(isBegin(kSustain), isValue(kSustain, kRight), isEnd(kSustain)));
    EXPECT_EQ(frameOf(kSustain), 24);
}

TEST_F(EditorKnob, TurnsAlongALineInTheHostsLinearMode) {
    EXPECT_EQ(plugin->dispatch(effSetEditKnobMode, 2), 1);
    plugin->setParameter(kSustain, 0.F);
    window->movePointer(centre.x, centre.y);
    window->press();
    window->movePointer(centre.x, centre.y - 100); // of 200 pixels
    window->release();
    EXPECT_TRUE(idleUntilFrame(kSustain, 14));
    EXPECT_EQ(plugin->dispatch(effSetEditKnobMode, 0), 1); // for all editors of the process
}

TEST_F(EditorKnob, TellsTheHostNothingOfAPressOnALabelOrADisplay) {
    for (const int y : {centre.y - 34, centre.y + 34}) {
        window->click(centre.x, y);
        window->movePointer(centre.x, y);
        window->press(4);
        window->release(4);
    }
    idleAWhile();
    EXPECT_TRUE(plugin->calls.empty());
}

} // namespace
} // namespace zelvatone::test
