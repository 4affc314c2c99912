// Which object holds the views, which view is asked first, and a frame without a window.
#include "tests/vstgui/Fixtures.h"

#include "vstgui/lib/platform/linux/linuxfactory.h"

#include <cstdio>
#include <fstream>

namespace VSTGUI::test {
namespace {

// A view that notes its end.
class MortalView final : public CView {
public:
    MortalView(const CRect& size, bool& notes) : CView(size), isGone(notes) { isGone = false; }

protected:
    ~MortalView() override { isGone = true; }

private:
    bool& isGone;
};

class Frame : public KnobTest {};

TEST_F(Frame, TakesOverTheReferenceOfAView) {
    bool isGone = false;
    auto* view = new MortalView(kKnobSize, isGone);
    EXPECT_TRUE(frame->addView(view));
    EXPECT_EQ(view->getNbReference(), 2);
    EXPECT_TRUE(frame->removeView(view, false));
    EXPECT_EQ(view->getNbReference(), 1);
    EXPECT_FALSE(isGone);
    EXPECT_TRUE(frame->addView(view));
    EXPECT_TRUE(frame->removeView(view));
    EXPECT_TRUE(isGone);
}

TEST_F(Frame, RefusesAViewThatHasAFrameAndOneThatIsNotItsOwn) {
    EXPECT_FALSE(frame->addView(knob));
    EXPECT_FALSE(frame->addView(nullptr));
    EXPECT_EQ(frame->getNbViews(), 1U);
    bool isGone = false;
    auto* stranger = new MortalView(kKnobSize, isGone);
    EXPECT_FALSE(frame->removeView(stranger));
    stranger->forget();
    EXPECT_TRUE(isGone);
}

TEST_F(Frame, ReleasesItsViewsWhenItIsClosed) {
    bool isGone = false;
    auto* other = new CFrame(kFrameSize, nullptr);
    other->addView(new MortalView(kKnobSize, isGone));
    other->close();
    EXPECT_TRUE(isGone);
}

TEST_F(Frame, ReleasesItsViewsWhenItIsForgotten) {
    bool isGone = false;
    auto* other = new CFrame(kFrameSize, nullptr);
    other->addView(new MortalView(kKnobSize, isGone));
    other->forget();
    EXPECT_TRUE(isGone);
}

TEST_F(Frame, KeepsViewsInTheOrderOfAdding) {
    auto* above = new CTextLabel(CRect(0, 0, 1, 1));
    auto* below = new CTextLabel(CRect(0, 0, 1, 1));
    frame->addView(above);
    frame->addView(below, knob);
    EXPECT_EQ(frame->getView(0), below);
    EXPECT_EQ(frame->getView(1), knob);
    EXPECT_EQ(frame->getView(2), above);
    EXPECT_EQ(frame->getView(3), nullptr);
}

TEST_F(Frame, LetsThePressThroughTransparentViewsOnly) {
    auto* label = new CTextLabel(kKnobSize);
    frame->addView(label);
    EXPECT_FALSE(press(320, 110));
    label->setTransparency(true);
    EXPECT_TRUE(press(320, 110));
    release(320, 110);
}

TEST_F(Frame, OpensNothingInAWindowThatIsNotThere) {
    EXPECT_FALSE(frame->open(nullptr));
    EXPECT_FALSE(frame->open(frame, PlatformType::kHWND));
    frame->idle();
}

TEST_F(Frame, AsksItsEditorForTheKnobMode) {
    EXPECT_EQ(frame->getKnobMode(), kCircularMode);
    recorder.knobMode = kLinearMode;
    EXPECT_EQ(frame->getKnobMode(), kLinearMode);
    const auto orphan = owned(new CFrame(kFrameSize, nullptr));
    EXPECT_EQ(orphan->getKnobMode(), CFrame::kDefaultKnobMode);
}

class Picture : public ToolkitTest {};

TEST_F(Picture, IsSharedByWhoShowsIt) {
    const auto picture = owned(makePicture(3, 2, [](int, int) { return kRedCColor; }));
    EXPECT_EQ(picture->getWidth(), 3);
    EXPECT_EQ(picture->getHeight(), 2);
    auto* view = new CKickButton(kKnobSize, nullptr, 0, nullptr);
    view->setBackground(picture);
    EXPECT_EQ(picture->getNbReference(), 2);
    view->forget();
    EXPECT_EQ(picture->getNbReference(), 1);
}

TEST_F(Picture, IsEmptyWhenItsFileIsMissing) {
    const auto missing = makeOwned<CBitmap>("no-such-picture.png");
    EXPECT_FALSE(missing->isLoaded());
    EXPECT_FALSE(missing->getPlatformBitmap());
    EXPECT_EQ(missing->getWidth(), 0);
    EXPECT_EQ(missing->getHeight(), 0);
}

TEST_F(Picture, IsEmptyWhenItsBytesAreBroken) {
    std::string bytes = makePng(20, 20, [](int x, int) { return CColor(std::uint8_t(x), 0, 0); });
    const auto decode = [](const std::string& from) {
        return getPlatformFactory().createBitmapFromMemory(from.data(),
                                                           static_cast<std::uint32_t>(from.size()));
    };
    EXPECT_TRUE(decode(bytes));
    EXPECT_FALSE(decode(bytes.substr(0, bytes.size() / 2)));
    EXPECT_FALSE(decode("certainly no picture"));
    EXPECT_FALSE(decode(""));
}

TEST_F(Picture, IsFoundByNameInTheResourceFolder) {
    const std::string folder = testing::TempDir();
    const std::string name = "vstgui-picture-test.png";
    std::ofstream(folder + name, std::ios::binary)
        << makePng(5, 4, [](int, int) { return kRedCColor; });
    getPlatformFactory().asLinuxFactory()->setResourcePath(folder);
    const auto found = makeOwned<CBitmap>(name.c_str());
    const auto missing = makeOwned<CBitmap>("another.png");
    EXPECT_EQ(found->getWidth(), 5);
    EXPECT_FALSE(missing->isLoaded());
    EXPECT_EQ(std::remove((folder + name).c_str()), 0);
}

TEST(Toolkit, StartsAgainAfterItsEnd) {
    for (int round = 0; round < 2; ++round) {
        init(nullptr);
        EXPECT_EQ(kNormalFont->getName(), "Arial");
        EXPECT_EQ(kNormalFont->getSize(), 12);
        exit();
        EXPECT_EQ(kNormalFont, nullptr);
    }
}

} // namespace
} // namespace VSTGUI::test
