// A frame that is shown larger: what the window has in its pixels is in the frame's for the views.
#include "tests/vstgui/Fixtures.h"

#include <cmath>

namespace VSTGUI::test {
namespace {

class Zoom : public KnobTest {};

TEST_F(Zoom, IsOneUntilAnotherIsSet) {
    EXPECT_EQ(frame->getZoom(), 1);
    EXPECT_TRUE(frame->setZoom(1.5));
    EXPECT_EQ(frame->getZoom(), 1.5);
}

TEST_F(Zoom, IsNotSetToAFactorThatShowsNothing) {
    for (const double factor : {0., -1., std::nan("")}) {
        EXPECT_FALSE(frame->setZoom(factor));
        EXPECT_EQ(frame->getZoom(), 1);
    }
}

TEST_F(Zoom, LeavesTheViewsWhereTheyAre) {
    frame->setZoom(2);
    EXPECT_EQ(frame->getViewSize(), kFrameSize);
    EXPECT_EQ(knob->getViewSize(), kKnobSize);
}

// Straight up is a half, straight to the right a third of the range more.
TEST_F(Zoom, GivesTheSameValueForTheSameAngle) {
    for (const double factor : {1., 1.25, 1.5, 1.75, 2., 3.}) {
        frame->setZoom(factor);
        knob->setValue(0.F);
        const CPoint centre(320 * factor, 130 * factor);
        EXPECT_EQ(drag(centre + CPoint(5, 20), centre - CPoint(0, 33)), 0.5F) << factor;
        EXPECT_NEAR(drag(centre - CPoint(0, 20), centre + CPoint(20, 0)), 0.8333333F, 1e-6F)
            << factor;
    }
}

TEST_F(Zoom, StretchesTheWayOfALinearDrag) {
    recorder.knobMode = kLinearMode;
    frame->setZoom(2);
    knob->setValue(0.5F);
    // 40 of the window's pixels are 20 of the frame's, a tenth of 200.
    EXPECT_NEAR(drag({640, 260}, {640, 220}), 0.6F, 1e-6F);
}

// An editor that lets no window grow, and remembers what it was asked.
class Unwilling : public VSTGUIEditorInterface {
public:
    bool beforeSizeChange(const CRect& newSize, const CRect& oldSize) override {
        wanted = newSize;
        had = oldSize;
        return false;
    }

    CRect wanted, had;
};

TEST_F(Zoom, AsksTheEditorForTheSizeInWholePixels) {
    Unwilling editor;
    const auto asking = owned(new CFrame(kFrameSize, &editor));
    EXPECT_FALSE(asking->setZoom(1.25));
    EXPECT_EQ(asking->getZoom(), 1);
    EXPECT_EQ(editor.had, kFrameSize);
    // 896.25 x 596.25
    EXPECT_EQ(editor.wanted, CRect(0, 0, 896, 596));
}

class ZoomedPicture : public ToolkitTest {};

TEST_F(ZoomedPicture, IsAsLargeAsTheFrameCountsIt) {
    const auto picture = owned(makePicture(20, 10, [](int, int) { return kRedCColor; }));
    picture->getPlatformBitmap()->setScaleFactor(2);
    EXPECT_EQ(picture->getWidth(), 10);
    EXPECT_EQ(picture->getHeight(), 5);
}

} // namespace
} // namespace VSTGUI::test
