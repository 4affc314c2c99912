// A real pointer turns a knob: the same numbers as for events that a test makes itself.
#include "tests/vstgui/Fixtures.h"

namespace VSTGUI::test {
namespace {

constexpr float kTolerance = 1e-6F;

class Pointer : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        if (IsSkipped()) {
            return;
        }
        host = std::make_unique<HostWindow>();
        frame = openFrame(*host);
        knob = addKnob(*frame);
        ASSERT_TRUE(isDrawn(*frame, *host, 0, 0, kRedCColor));
    }
    void TearDown() override {
        if (frame) {
            frame->close();
        }
    }
    bool idleUntilCount(const std::string& entry, int times, int hz = 60) {
        return idleUntil(
            *frame, [&] { return recorder.count(entry) == times; }, hz);
    }

    std::unique_ptr<HostWindow> host;
    CFrame* frame = nullptr;
    CAnimKnob* knob = nullptr;
};

TEST_F(Pointer, TurnsTheKnobFarOutsideTheWindow) {
    host->movePointer(320, 110);
    host->press();
    host->movePointer(860, 130); // right of the window's edge
    ASSERT_TRUE(idleUntilCount("value", 1));
    EXPECT_NEAR(knob->getValue(), 0.8333333F, kTolerance);
    host->movePointer(320, -90); // above it
    ASSERT_TRUE(idleUntilCount("value", 2));
    EXPECT_NEAR(knob->getValue(), 0.5F, kTolerance);
    host->release();
    ASSERT_TRUE(idleUntilCount("end 7", 1));
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"control begin", "begin 7", "value", "value",
                                                      "end 7", "control end"}));
}

TEST_F(Pointer, ShowsTheKnobsPictureForItsValue) {
    EXPECT_TRUE(isDrawn(*frame, *host, 320, 130, stripColor(0)));
    host->movePointer(320, 110);
    host->press();
    host->movePointer(340, 130);
    // 0.8333 x 29 = 24.2
    EXPECT_TRUE(isDrawn(*frame, *host, 320, 130, stripColor(24)));
    EXPECT_TRUE(isDrawn(*frame, *host, 296, 106, stripColor(24)));
    EXPECT_TRUE(isDrawn(*frame, *host, 343, 153, stripColor(24)));
    EXPECT_TRUE(isDrawn(*frame, *host, 344, 153, kRedCColor));
    host->release();
}

TEST_F(Pointer, TurnsFinelyAlongALineWithShift) {
    recorder.knobMode = kLinearMode;
    knob->setValue(0.5F);
    host->holdShift(true);
    host->movePointer(320, 130);
    host->press();
    host->movePointer(320, 100);
    ASSERT_TRUE(idleUntilCount("value", 1));
    EXPECT_NEAR(knob->getValue(), 0.6F, kTolerance);
    host->release();
    host->holdShift(false);
    EXPECT_TRUE(idleUntilCount("end 7", 1));
}

TEST_F(Pointer, TurnsAlongALineWithAlt) {
    knob->setValue(0.5F);
    frame->idle();
    host->holdAlt(true);
    host->movePointer(320, 130);
    host->press();
    host->movePointer(320, 330);
    ASSERT_TRUE(idleUntilCount("value", 1));
    EXPECT_EQ(knob->getValue(), 0.F);
    host->release();
    host->holdAlt(false);
    EXPECT_TRUE(idleUntilCount("end 7", 1));
}

TEST_F(Pointer, SetsTheDefaultValueWithControl) {
    knob->setValue(0.25F);
    host->holdControl(true);
    host->click(320, 130);
    ASSERT_TRUE(idleUntilCount("end 7", 1));
    EXPECT_EQ(knob->getValue(), 0.5F);
    host->click(320, 130);
    ASSERT_TRUE(idleUntilCount("modifier", 2));
    host->holdControl(false);
    EXPECT_EQ(recorder.count("begin 7"), 1);
    EXPECT_EQ(recorder.count("value"), 1);
}

TEST_F(Pointer, EndsItsDragWithAPressOfAnotherButton) {
    host->movePointer(320, 110);
    host->press();
    host->movePointer(340, 130);
    host->press(3);
    host->movePointer(304, 114);
    host->release(3);
    host->movePointer(304, 130);
    host->release();
    ASSERT_TRUE(idleUntilCount("end 7", 1));
    EXPECT_NEAR(knob->getValue(), 0.8333333F, kTolerance);
    EXPECT_EQ(recorder.count("value"), 1);
    // With all buttons up, a drag is a drag again.
    host->movePointer(320, 110);
    host->press();
    host->movePointer(304, 114);
    host->release();
    ASSERT_TRUE(idleUntilCount("end 7", 2));
    EXPECT_NEAR(knob->getValue(), 0.3333333F, kTolerance);
}

TEST_F(Pointer, MovesNothingWhileAnotherButtonWasHeldBefore) {
    for (const int other : {2, 3}) {
        recorder.log.clear();
        host->movePointer(320, 110);
        host->press(other);
        host->press();
        host->movePointer(340, 130);
        host->release();
        host->release(other);
        ASSERT_TRUE(idleUntilCount("end 7", 1));
        EXPECT_EQ(recorder.count("begin 7"), 1);
        EXPECT_EQ(recorder.count("value"), 0);
    }
}

TEST_F(Pointer, TurnsTheWheel) {
    constexpr int kUp = 4, kDown = 5, kLeft = 6, kRight = 7;
    knob->setValue(0.5F);
    host->movePointer(320, 130);
    const auto notch = [this](int button) {
        host->press(button);
        host->release(button);
    };
    notch(kUp);
    notch(kUp);
    notch(kDown);
    notch(kRight);
    notch(kLeft);
    ASSERT_TRUE(idleUntilCount("value", 3));
    EXPECT_NEAR(knob->getValue(), 0.6F, kTolerance);
    ASSERT_TRUE(idleUntilCount("end 7", 1));
    EXPECT_EQ(recorder.count("begin 7"), 1);
}

TEST_F(Pointer, EndsTheDragWhenTheWindowIsHidden) {
    knob->setValue(0.25F);
    host->movePointer(320, 110);
    host->press();
    host->movePointer(340, 130);
    ASSERT_TRUE(idleUntilCount("value", 1));
    host->hide();
    host->release();
    EXPECT_TRUE(idleUntilCount("end 7", 1));
    EXPECT_NEAR(knob->getValue(), 0.8333333F, kTolerance);
}

// Hosts idle as they like; a drag of many moves between two idles is followed move by move.
class PointerAtRate : public Pointer, public testing::WithParamInterface<int> {};

TEST_P(PointerAtRate, FollowsEveryMoveOfADrag) {
    host->movePointer(304, 146);
    host->press();
    // From the lower end over the top to the upper end, in steps of one pixel; a pointer that was
    // seen at both ends only would be taken for a jump across the gap.
    for (int y = 145; y >= 110; --y) {
        host->movePointer(304, y);
    }
    for (int x = 305; x <= 336; ++x) {
        host->movePointer(x, 110);
    }
    for (int y = 111; y <= 146; ++y) {
        host->movePointer(336, y);
    }
    host->release();
    ASSERT_TRUE(idleUntilCount("end 7", 1, GetParam()));
    EXPECT_EQ(knob->getValue(), 1.F);
    EXPECT_EQ(recorder.count("begin 7"), 1);
}

TEST_P(PointerAtRate, EndsTheWheelsGestureByTheClock) {
    host->movePointer(320, 130);
    host->press(4);
    host->release(4);
    ASSERT_TRUE(idleUntilCount("value", 1, GetParam()));
    const auto seen = Recorder::Clock::now();
    ASSERT_TRUE(idleUntilCount("end 7", 1, GetParam()));
    // The notch was handled within the idle before `seen`: some milliseconds at most.
    EXPECT_GE(recorder.endedAt - seen, std::chrono::milliseconds(400));
}

INSTANTIATE_TEST_SUITE_P(Hertz, PointerAtRate, testing::Values(15, 30, 60));

} // namespace
} // namespace VSTGUI::test
