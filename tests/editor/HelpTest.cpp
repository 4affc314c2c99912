// The help: its button, its index with five areas, and a page for each.
#include "tests/editor/EditorFixture.h"

#include <gmock/gmock.h>

#include <array>
#include <string>

namespace zelvatone::test {
namespace {

constexpr Point kButton{562, 15};
constexpr Point kBesideAreas{5, 20};

// All edges belong to the area.
struct HelpArea {
    int page;
    int left;
    int top;
    int right;
    int bottom;

    Point middle() const { return {(left + right) / 2, (top + bottom) / 2}; }
    std::array<Point, 4> corners() const {
        return {Point{left, top}, {right, top}, {left, bottom}, {right, bottom}};
    }
    // Each one pixel away from a corner.
    std::array<Point, 8> neighbours() const {
        return {Point{left - 1, top}, {left, top - 1},    {right + 1, top},    {right, top - 1},
                {left - 1, bottom},   {left, bottom + 1}, {right + 1, bottom}, {right, bottom + 1}};
    }
};

const HelpArea kAreas[] = {{1, 14, 40, 271, 187},
                           {2, 277, 40, 697, 275},
                           {3, 14, 193, 271, 340},
                           {4, 14, 344, 271, 474},
                           {5, 277, 344, 563, 473}};

class EditorHelp : public EditorTest {
protected:
    void SetUp() override {
        EditorTest::SetUp();
        if (!IsSkipped()) {
            ASSERT_TRUE(openEditor());
            editor = look();
        }
    }

    // What is to be seen: "editor", "index", "page 1" to "page 5", or "?".
    std::string shown() const {
        const Screenshot shot = look();
        if (areAlike(shot, editor)) {
            return "editor";
        }
        if (areAlike(shot, index)) {
            return "index";
        }
        for (std::size_t page = 0; page < pages.size(); ++page) {
            if (areAlike(shot, pages[page])) {
                return "page " + std::to_string(page + 1);
            }
        }
        return "?";
    }
    bool idleUntilShown(const std::string& what) {
        return idleUntil([&] { return shown() == what; });
    }
    bool click(const Point& where, const std::string& then) {
        window->click(where.x, where.y);
        return idleUntilShown(then);
    }
    bool openHelp() { return click(kButton, "index"); }

    Screenshot editor; // as it was opened
    const Screenshot index = readPicture("HELPOVERLAY.PNG");
    const std::array<Screenshot, 5> pages{readPicture("HELP1.PNG"), readPicture("HELP2.PNG"),
                                          readPicture("HELP3.PNG"), readPicture("HELP4.PNG"),
                                          readPicture("HELP5.PNG")};
};

TEST_F(EditorHelp, StaysClosedWhenAnotherButtonIsPressedMeanwhile) {
    window->movePointer(kButton.x, kButton.y);
    window->press();
    window->press(3);
    window->release(3);
    window->release();
    idleAWhile();
    EXPECT_EQ(shown(), "editor");
}

TEST_F(EditorHelp, OpensOnItsIndexAndSaysSo) {
    testing::internal::CaptureStdout();
    EXPECT_TRUE(openHelp());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Help button Mouse up!\n");
}

TEST_F(EditorHelp, ShowsThePageOfEachAreaAndGoesBackToTheIndex) {
    ASSERT_TRUE(openHelp());
    for (const HelpArea& area : kAreas) {
        const std::string page = "page " + std::to_string(area.page);
        EXPECT_TRUE(click(area.middle(), page)) << shown() << " instead of " << page;
        EXPECT_TRUE(click(area.middle(), "index")) << page;
    }
}

TEST_F(EditorHelp, CountsAnAreasBorderToTheArea) {
    ASSERT_TRUE(openHelp());
    for (const HelpArea& area : kAreas) {
        for (const Point& corner : area.corners()) {
            EXPECT_TRUE(click(corner, "page " + std::to_string(area.page)))
                << corner.x << ", " << corner.y;
            EXPECT_TRUE(click(kBesideAreas, "index"));
        }
    }
}

TEST_F(EditorHelp, ClosesWithAClickBesideTheAreas) {
    for (const HelpArea& area : kAreas) {
        for (const Point& neighbour : area.neighbours()) {
            ASSERT_TRUE(openHelp());
            EXPECT_TRUE(click(neighbour, "editor")) << neighbour.x << ", " << neighbour.y;
        }
    }
}

TEST_F(EditorHelp, GoesBackToTheIndexFromAnywhereOnAPage) {
    ASSERT_TRUE(openHelp());
    for (const Point& where : {kBesideAreas, kButton, Point{0, 0}, Point{716, 476}}) {
        EXPECT_TRUE(click(kAreas[2].middle(), "page 3"));
        EXPECT_TRUE(click(where, "index")) << where.x << ", " << where.y;
    }
}

TEST_F(EditorHelp, BeginsOnItsIndexEachTimeItOpens) {
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(openHelp());
        EXPECT_TRUE(click(kAreas[0].middle(), "page 1"));
        EXPECT_TRUE(click(kBesideAreas, "index"));
        EXPECT_TRUE(click(kBesideAreas, "editor"));
    }
}

TEST_F(EditorHelp, StaysInSightWhileTheButtonIsHeld) {
    ASSERT_TRUE(openHelp());
    const Point where = kAreas[1].middle();
    window->movePointer(where.x, where.y);
    window->press();
    idleAWhile();
    EXPECT_EQ(shown(), "index");
    window->release();
    EXPECT_TRUE(idleUntilShown("page 2"));
}

TEST_F(EditorHelp, OpensWhenThePointerHasLeftTheButtonBeforeTheRelease) {
    window->movePointer(kButton.x, kButton.y);
    window->press();
    window->movePointer(320, 130);
    window->release();
    EXPECT_TRUE(idleUntilShown("index"));
}

TEST_F(EditorHelp, ClosesWhenTheButtonIsClickedTwice) {
    window->click(kButton.x, kButton.y);
    EXPECT_TRUE(idleUntilShown("index"));
    window->click(kButton.x, kButton.y);
    EXPECT_TRUE(idleUntilShown("editor"));
}

TEST_F(EditorHelp, ReachesToTheEdgesOfItsButtonAndNoFurther) {
    for (const Point& inside : {Point{550, 0}, Point{574, 29}}) {
        EXPECT_TRUE(click(inside, "index"));
        EXPECT_TRUE(click(kBesideAreas, "editor"));
    }
    for (const Point& outside : {Point{549, 10}, Point{575, 10}, Point{560, 30}}) {
        window->click(outside.x, outside.y);
        idleAWhile();
        EXPECT_EQ(shown(), "editor") << outside.x << ", " << outside.y;
    }
}

TEST_F(EditorHelp, OpensForTheLeftButtonAloneAndWithoutCtrl) {
    window->click(kButton.x, kButton.y, 3);
    window->holdControl(true);
    window->click(kButton.x, kButton.y);
    window->holdControl(false);
    idleAWhile();
    EXPECT_EQ(shown(), "editor");
    EXPECT_TRUE(plugin->calls.empty());
}

TEST_F(EditorHelp, TellsTheHostOfNoGesture) {
    ASSERT_TRUE(openHelp());
    EXPECT_TRUE(click(kAreas[4].middle(), "page 5"));
    EXPECT_TRUE(click(kBesideAreas, "index"));
    EXPECT_TRUE(click(kBesideAreas, "editor"));
    EXPECT_TRUE(plugin->calls.empty());
}

TEST_F(EditorHelp, KeepsTheMouseFromTheKnobsBelow) {
    ASSERT_TRUE(openHelp());
    window->movePointer(320, 130);
    window->press(4);
    window->release(4);
    idleAWhile();
    EXPECT_EQ(shown(), "index");
    EXPECT_TRUE(plugin->calls.empty());
}

TEST_F(EditorHelp, HidesWhatChangesBelowUntilItCloses) {
    ASSERT_TRUE(openHelp());
    plugin->setParameter(20, 0.F);
    idleAWhile();
    EXPECT_EQ(shown(), "index");
    window->click(kBesideAreas.x, kBesideAreas.y);
    EXPECT_TRUE(idleUntilFrame(20, 0));
}

TEST_F(EditorHelp, GoesAwayWithTheEditorThatCloses) {
    ASSERT_TRUE(openHelp());
    plugin->closeEditor();
    EXPECT_TRUE(window->children().empty());
    ASSERT_TRUE(openEditor());
    EXPECT_TRUE(idleUntilShown("editor"));
    EXPECT_TRUE(openHelp());
}

} // namespace
} // namespace zelvatone::test
