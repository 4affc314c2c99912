// What the host and the user find when the editor opens.
#include "tests/editor/EditorFixture.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace zelvatone::test {
namespace {

// Which picture shows a normalised value: the last one for 1 only.
int frameFor(float value) {
    return static_cast<int>(std::floor(static_cast<double>(value) * 29));
}

class EditorWindow : public EditorTest {
protected:
    void expectEveryKnobAtItsValue() {
        for (const Knob& knob : kAllKnobs) {
            EXPECT_TRUE(idleUntilFrame(knob.parameter, frameFor(plugin->parameter(knob.parameter))))
                << "parameter " << knob.parameter << " shows " << frameOf(knob.parameter);
        }
    }
};

TEST_F(EditorWindow, IsAnnouncedToTheHost) {
    EXPECT_EQ(plugin->flags(), 0x111);
}

TEST_F(EditorWindow, TellsItsSizeOpenOrClosed) {
    for (int round = 0; round < 2; ++round) {
        ERect* rect = nullptr;
        EXPECT_EQ(plugin->dispatch(effEditGetRect, 0, &rect), 1);
        ASSERT_NE(rect, nullptr);
        EXPECT_EQ(rect->top, 0);
        EXPECT_EQ(rect->left, 0);
        EXPECT_EQ(rect->bottom, 477);
        EXPECT_EQ(rect->right, 717);
        ASSERT_TRUE(openEditor());
    }
}

TEST_F(EditorWindow, SaysWhenItIsMadeAndWhenItOpens) {
    testing::internal::CaptureStdout();
    plugin = std::make_unique<Plugin>();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "calling setEditor(this)\n");
    testing::internal::CaptureStdout();
    EXPECT_TRUE(openEditor());
    plugin->closeEditor();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "opening editor\n");
}

TEST_F(EditorWindow, ShowsItsBackgroundWhereverThereIsNoControl) {
    ASSERT_TRUE(openEditor());
    const Screenshot shot = look();
    const Screenshot background = readPicture("BACKGROUND.PNG");
    int wrong = 0;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const bool isControl = std::ranges::any_of(kAllKnobs, [=](const Knob& knob) {
                return knob.area().holds(x, y) || knob.label().holds(x, y) ||
                       knob.display().holds(x, y);
            });
            wrong += !isControl && shot.at(x, y) != background.at(x, y);
        }
    }
    EXPECT_EQ(wrong, 0);
}

TEST_F(EditorWindow, ShowsEveryKnobAtItsValue) {
    ASSERT_TRUE(openEditor());
    expectEveryKnobAtItsValue();
}

TEST_F(EditorWindow, ShowsTheTopPictureForZeroAndTheLastForOne) {
    ASSERT_TRUE(openEditor());
    plugin->setParameter(20, 0.F);
    EXPECT_TRUE(idleUntilFrame(20, 0));
    plugin->setParameter(20, std::nextafter(1.F, 0.F));
    EXPECT_TRUE(idleUntilFrame(20, 28));
    plugin->setParameter(20, 1.F);
    EXPECT_TRUE(idleUntilFrame(20, 29));
}

TEST_F(EditorWindow, CentresEveryTextInItsPlace) {
    ASSERT_TRUE(openEditor());
    const Screenshot shot = look();
    for (const Knob& knob : kAllKnobs) {
        for (const Area& place : {knob.label(), knob.display()}) {
            const Area ink = inkIn(shot, place);
            EXPECT_GE(ink.width(), 15) << knob.parameter;
            // Capitals and digits are nine pixels high; a y reaches three further down.
            EXPECT_GE(ink.height(), 8) << knob.parameter;
            EXPECT_LE(ink.height(), 13) << knob.parameter;
            // Letters carry a pixel or two of white at one side.
            EXPECT_NEAR(ink.left - place.left, place.right - ink.right, 4) << knob.parameter;
            EXPECT_NEAR(ink.top, place.top + 6, 1) << knob.parameter;
        }
    }
}

TEST_F(EditorWindow, GivesEveryKnobItsOwnName) {
    ASSERT_TRUE(openEditor());
    const Screenshot shot = look();
    std::set<std::vector<Pixel>> names;
    for (const Knob& knob : kAllKnobs) {
        names.insert(cutOut(shot, knob.label()).pixels);
    }
    EXPECT_EQ(names.size(), kKnobs);
}

TEST_F(EditorWindow, WritesInWhite) {
    ASSERT_TRUE(openEditor());
    const Screenshot shot = look();
    for (const Knob& knob : kAllKnobs) {
        for (const Area& place : {knob.label(), knob.display()}) {
            const auto brightest = std::ranges::max(cutOut(shot, place).pixels);
            EXPECT_GE(brightest, 0xe0e0e0U) << knob.parameter;
        }
    }
}

TEST_F(EditorWindow, MovesEveryKnobWithTheProgram) {
    ASSERT_TRUE(openEditor());
    for (const VstInt32 program : {41, 7, 0}) {
        plugin->setProgram(program);
        expectEveryKnobAtItsValue();
        const Screenshot shown = displayOf(18);
        EXPECT_TRUE(areAlike(freshDisplayOf(18), shown));
    }
}

TEST_F(EditorWindow, ShowsAProgramThatWasChosenWhileItWasClosed) {
    plugin->setProgram(23);
    ASSERT_TRUE(openEditor());
    expectEveryKnobAtItsValue();
}

TEST_F(EditorWindow, ComesBackWholeAfterItWasClosed) {
    ASSERT_TRUE(openEditor());
    const Screenshot first = look();
    plugin->closeEditor();
    EXPECT_TRUE(window->children().empty());
    ASSERT_TRUE(openEditor());
    EXPECT_TRUE(idleUntil([&] { return areAlike(look(), first); }));
}

TEST_F(EditorWindow, IsDrawnByAHostThatIdlesSeldom) {
    EXPECT_TRUE(plugin->openEditor(window->handle()));
    EXPECT_TRUE(idleUntil([&] { return frameOf(20) != -1; }, 15));
}

TEST_F(EditorWindow, AppearsInAHostThatEmbedsStrictly) {
    window = std::make_unique<HostWindow>(Host::kEmbedsStrictly);
    EXPECT_TRUE(plugin->openEditor(window->handle()));
    ASSERT_EQ(window->children().size(), 1U);
    EXPECT_EQ(window->embedInfo(window->children()[0]), (std::vector<std::uint32_t>{1, 1}));
    EXPECT_TRUE(idleUntil([&] {
        window->embedChildren();
        return frameOf(20) != -1;
    }));
}

TEST_F(EditorWindow, AppearsInAHostThatKnowsNothingOfEmbedding) {
    ASSERT_TRUE(openEditor());
    ASSERT_EQ(window->children().size(), 1U);
    EXPECT_TRUE(window->isViewable(window->children()[0]));
}

TEST_F(EditorWindow, LeavesTheKeyboardToTheHost) {
    ASSERT_TRUE(openEditor());
    window->takeFocus();
    window->click(320, 110);
    idleAWhile();
    EXPECT_TRUE(window->hasFocus());
    window->typeKey();
    EXPECT_EQ(window->keysHeard(), 1);
}

TEST_F(EditorWindow, ReturnsThatItOpensInAWindowThatIsNotThere) {
    void* const gone = HostWindow().handle();
    EXPECT_TRUE(plugin->openEditor(gone));
    plugin->setParameter(3, 0.5F);
    idleAWhile();
    plugin->closeEditor();
    EXPECT_TRUE(plugin->openEditor(nullptr));
    plugin->setParameter(3, 0.5F);
    idleAWhile();
    ASSERT_TRUE(openEditor());
}

} // namespace
} // namespace zelvatone::test
