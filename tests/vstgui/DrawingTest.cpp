// What controls ask the platform to draw.
#include "tests/vstgui/Fixtures.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/platform/linux/cairodrawing.h"

namespace VSTGUI::test {
namespace {

// Draws nothing; remembers the last picture's offset and the last text's place.
class DrawingNotes final : public CDrawContext {
public:
    void drawBitmap(const IPlatformBitmap&, const CRect&, const CPoint& at) override {
        offset = at;
    }
    void fillRect(const CRect& rect, const CColor& color) override {
        filled = rect;
        fillColor = color;
    }
    void frameRect(const CRect& rect, const CColor& color) override {
        framed = rect;
        frameColor = color;
    }
    void drawString(const IPlatformFont&, const std::string& written, const CPoint& at,
                    const CRect& within, const CColor& color) override {
        text = written;
        baseline = at;
        clip = within;
        textColor = color;
    }

    CPoint offset{-1, -1}, baseline;
    CRect filled, framed, clip;
    CColor fillColor, frameColor, textColor;
    std::string text;
};

class KnobPicture : public KnobTest {
protected:
    double indexAt(float value) {
        knob->setValue(value);
        DrawingNotes notes;
        knob->draw(&notes);
        EXPECT_EQ(notes.offset.x, 0);
        return notes.offset.y / 48;
    }
};

TEST_F(KnobPicture, IsTheOneBelowTheValue) {
    // 29 steps from the first picture to the last: index = floor (29 x value).
    const std::pair<float, int> pictures[] = {
        {0.F, 0},     {.0344F, 0},  {.0345F, 1},   {.1F, 2},      {.25F, 7},    {.3333F, 9},
        {.4999F, 14}, {.5F, 14},    {.51724F, 14}, {.51725F, 15}, {.6667F, 19}, {.75F, 21},
        {.9F, 26},    {.9654F, 27}, {.9656F, 28},  {.9999F, 28},  {1.F, 29}};
    for (const auto& [value, index] : pictures) {
        EXPECT_EQ(indexAt(value), index) << value;
    }
}

TEST_F(KnobPicture, CountsThePicturesByTheStripAndNotByTheNumberGiven) {
    const auto strip = owned(makePicture(48, 4 * 48, [](int, int) { return kRedCColor; }));
    const auto four = owned(new CAnimKnob(kKnobSize, nullptr, 0, 30, 48, strip));
    const auto same = owned(new CAnimKnob(kKnobSize, nullptr, 0, strip));
    for (const auto& other : {four, same}) {
        other->setValue(1.F);
        DrawingNotes notes;
        other->draw(&notes);
        EXPECT_EQ(notes.offset.y, 3 * 48);
    }
}

TEST_F(KnobPicture, IsEmptyForAMissingStrip) {
    const auto missing = owned(new CBitmap("missing.png"));
    const auto blank = owned(new CAnimKnob(kKnobSize, nullptr, 0, 30, 48, missing));
    DrawingNotes notes;
    blank->draw(&notes);
    EXPECT_EQ(notes.offset, CPoint(-1, -1));
}

TEST_F(KnobPicture, IsTheLowerOneOfAButtonThatIsDown) {
    const auto strip = owned(makePicture(25, 60, [](int, int) { return kRedCColor; }));
    auto* kick = new CKickButton(CRect(550, 0, 575, 30), nullptr, 0, strip);
    frame->addView(kick);
    const auto offsetNow = [kick] {
        DrawingNotes notes;
        kick->draw(&notes);
        return notes.offset.y;
    };
    EXPECT_EQ(offsetNow(), 0);
    press(560, 10);
    EXPECT_EQ(offsetNow(), 30);
    release(560, 10);
    EXPECT_EQ(offsetNow(), 0);
}

class Label : public ToolkitTest {
protected:
    static constexpr CRect kLabelSize{276, 86, 364, 106};

    DrawingNotes& drawn(const char* text, bool transparent) {
        const auto label = owned(new CTextLabel(kLabelSize, text));
        label->setTransparency(transparent);
        label->setBackColor({1, 2, 3});
        label->setFrameColor({4, 5, 6});
        label->draw(&notes);
        return notes;
    }

    DrawingNotes notes;
};

TEST_F(Label, StandsInTheMiddleOfItsRectangle) {
    drawn("Mode Shift", true);
    const IPlatformFont& font = kNormalFont->getPlatformFont();
    EXPECT_EQ(notes.text, "Mode Shift");
    EXPECT_EQ(notes.clip, kLabelSize);
    EXPECT_EQ(notes.textColor, kWhiteCColor);
    // As much room left of the text as right of it, and above the capitals as below.
    const double left = notes.baseline.x - kLabelSize.left;
    const double right = kLabelSize.right - (notes.baseline.x + font.getStringWidth("Mode Shift"));
    EXPECT_EQ(left, right);
    const double above = notes.baseline.y - font.getCapHeight() - kLabelSize.top;
    EXPECT_EQ(above, kLabelSize.bottom - notes.baseline.y);
}

TEST_F(Label, DrawsOnlyTheTextWhenTransparent) {
    drawn("Attack", true);
    EXPECT_TRUE(notes.filled.isEmpty());
    EXPECT_TRUE(notes.framed.isEmpty());
}

TEST_F(Label, FillsAndFramesItsRectangleOtherwise) {
    drawn("Attack", false);
    EXPECT_EQ(notes.filled, kLabelSize);
    EXPECT_EQ(notes.fillColor, CColor(1, 2, 3));
    EXPECT_EQ(notes.framed, kLabelSize);
    EXPECT_EQ(notes.frameColor, CColor(4, 5, 6));
}

TEST_F(Label, StartsEmptyWithoutAText) {
    EXPECT_EQ(drawn(nullptr, true).text, "");
}

TEST_F(Label, IsDirtyAfterANewTextOnly) {
    const auto label = owned(new CTextLabel(kLabelSize, "Attack"));
    label->setDirty(false);
    label->setText("Attack");
    EXPECT_FALSE(label->isDirty());
    label->setText("Decay");
    EXPECT_EQ(label->getText(), "Decay");
    EXPECT_TRUE(label->isDirty());
    label->setText(UTF8StringPtr{nullptr});
    EXPECT_TRUE(label->getText().empty());
}

class FrameLine : public ToolkitTest {};

// At scale 0.25 the frame's 16 pixels are the window's first four.
TEST_F(FrameLine, IsAPixelWideWhenTheFrameIsSmallerThanHalf) {
    CairoContext context(CAIRO_FORMAT_ARGB32, CRect(0, 0, 8, 8));
    context.setScaleFactor(0.25);
    context.frameRect(CRect(0, 0, 16, 16), kWhiteCColor);
    cairo_surface_t* picture = context.flushedSurface();
    const auto isWhite = [picture](int x, int y) {
        const std::uint8_t* row =
            cairo_image_surface_get_data(picture) + y * cairo_image_surface_get_stride(picture);
        return row[4 * x] == 255;
    };
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(isWhite(i, 0) && isWhite(i, 3) && isWhite(0, i) && isWhite(3, i)) << i;
    }
    EXPECT_FALSE(isWhite(1, 1));
    EXPECT_FALSE(isWhite(4, 4));
}

} // namespace
} // namespace VSTGUI::test
