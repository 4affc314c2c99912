// Labels as they are seen.
#include "tests/vstgui/Fixtures.h"

#include <cmath>

namespace VSTGUI::test {
namespace {

constexpr CRect kLabelSize{276, 86, 364, 106};

// The edges of letters fade out; what is darker than this is not seen.
constexpr Pixel kFaint = 64;

// Where there is something on the black background.
struct Ink {
    int left = 1000, top = 1000, right = -1, bottom = -1; // right and bottom are inside

    bool isEmpty() const { return right < left; }
    int width() const { return right - left + 1; }
    int height() const { return bottom - top + 1; }
};

class LabelWindow : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        if (IsSkipped()) {
            return;
        }
        host = std::make_unique<HostWindow>();
        frame = openFrame(*host);
        frame->setBackgroundColor(kBlackCColor);
        label = new CTextLabel(kLabelSize);
        label->setTransparency(true);
        frame->addView(label);
        // Tells that everything set before it has been drawn.
        marker = new CTextLabel(CRect(0, 0, 4, 4));
        frame->addView(marker);
    }
    void TearDown() override {
        if (frame) {
            frame->close();
        }
    }

    Screenshot shotOf(const char* text) {
        label->setText(text);
        mark = mark == kRedCColor ? kWhiteCColor : kRedCColor;
        marker->setBackColor(mark);
        marker->setFrameColor(mark);
        EXPECT_TRUE(isDrawn(*frame, *host, 1, 1, mark));
        return host->screenshot(0, 0, 717, 477);
    }
    Ink inkOf(const char* text) {
        const Screenshot shot = shotOf(text);
        Ink ink;
        for (int y = 50; y < 150; ++y) {
            for (int x = 200; x < 450; ++x) {
                if ((shot.at(x, y) & 0xff) > kFaint) {
                    ink.left = std::min(ink.left, x);
                    ink.right = std::max(ink.right, x);
                    ink.top = std::min(ink.top, y);
                    ink.bottom = std::max(ink.bottom, y);
                }
            }
        }
        return ink;
    }

    std::unique_ptr<HostWindow> host;
    CFrame* frame = nullptr;
    CTextLabel* label = nullptr;
    CTextLabel* marker = nullptr;
    CColor mark = kWhiteCColor;
};

TEST_F(LabelWindow, StandsInTheMiddle) {
    const Ink ink = inkOf("HIH");
    ASSERT_FALSE(ink.isEmpty());
    // Within a pixel, the font's own space beside the letters included.
    EXPECT_NEAR((ink.left + ink.right + 1) / 2.0, 320, 1);
    EXPECT_NEAR((ink.top + ink.bottom + 1) / 2.0, 96, 1);
}

TEST_F(LabelWindow, HasTheMeasuredPlaceInLiberationSans) {
    const IPlatformFont& font = kNormalFont->getPlatformFont();
    if (font.getStringWidth("Mode Shift") != 58 || font.getStringWidth("Attack") != 33 ||
        font.getStringWidth("0.8333") != 38 || font.getStringWidth("50%") != 25 ||
        font.getCapHeight() != 9) {
        GTEST_SKIP() << "Arial is not replaced by Liberation Sans here (fonts-liberation)";
    }
    const Ink ink = inkOf("Mode Shift");
    EXPECT_EQ(ink.left, 292);
    EXPECT_EQ(ink.top, 92);
    EXPECT_EQ(ink.width(), 57);
    EXPECT_EQ(ink.height(), 9);
}

TEST_F(LabelWindow, IsWhiteOnTheBackground) {
    shotOf("HIH");
    int white = 0, colored = 0;
    for (const Pixel pixel : host->screenshot(276, 86, 88, 20).pixels) {
        colored += pixel >> 16 != (pixel & 0xff);
        white += pixel == 0xffffff;
    }
    // The upright strokes of the letters, nine pixels high.
    EXPECT_GE(white, 9);
    EXPECT_EQ(colored, 0);
}

TEST_F(LabelWindow, IsCutOnBothSidesWhenItIsTooLong) {
    const Ink ink = inkOf("HHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHH");
    EXPECT_GE(ink.left, 276);
    EXPECT_LE(ink.left, 285);
    EXPECT_LT(ink.right, 364);
    EXPECT_GE(ink.right, 355);
}

TEST_F(LabelWindow, LeavesNothingOfItsLastText) {
    EXPECT_FALSE(inkOf("Mode Shift").isEmpty());
    EXPECT_TRUE(inkOf("").isEmpty());
    EXPECT_TRUE(inkOf(" ").isEmpty());
}

TEST_F(LabelWindow, StaysInOneLine) {
    EXPECT_LT(inkOf("H\nH").height(), 15);
}

TEST_F(LabelWindow, SurvivesBytesThatAreNotText) {
    inkOf("\xff\xfe\x80");
    EXPECT_FALSE(inkOf("Attack").isEmpty());
}

} // namespace
} // namespace VSTGUI::test
