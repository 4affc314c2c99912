// The editor on Windows in the window of a host that tells a scale. Leaves a picture of each.
#include "tests/windows/HostWindow.h"

#include "engine/ZelvatoneEngine.h"
#include "plugin/VSTGuiVSTInterface.h"
#include "vst2/aeffeditor.h"

#include <gtest/gtest.h>
#include <objidl.h>

#include <gdiplus.h>

#include <cmath>
#include <filesystem>
#include <memory>
#include <string>

namespace zelvatone::test {
namespace {

constexpr int kSustain = 20;
constexpr int kKnobX = 452, kKnobY = 421; // its centre, at scale 1

VstIntPtr hostOfNothing(AEffect*, VstInt32, VstInt32, VstIntPtr, void*, float) {
    return 0;
}

// GDI+ for the test itself.
class Pictures {
public:
    Pictures() {
        const Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&token, &input, nullptr);
    }
    ~Pictures() { Gdiplus::GdiplusShutdown(token); }
    Pictures(const Pictures&) = delete;
    Pictures& operator=(const Pictures&) = delete;

private:
    ULONG_PTR token = 0;
};

void save(WindowPicture picture, const std::string& name) {
    const std::filesystem::path folder = ZELVATONE_PICTURES;
    std::filesystem::create_directories(folder);
    Gdiplus::Bitmap bitmap(picture.width, picture.height, picture.width * 4, PixelFormat32bppRGB,
                           reinterpret_cast<BYTE*>(picture.pixels.data()));
    // GDI+'s own writer of PNG files.
    constexpr CLSID kPng{
        0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
    bitmap.Save((folder / name).c_str(), &kPng, nullptr);
}

class ScaledEditor : public testing::TestWithParam<double> {
protected:
    ScaledEditor() {
        plugin.setEditorScale(scale);
        plugin.getEditor()->open(window.handle());
        idle();
    }
    ~ScaledEditor() override { plugin.getEditor()->close(); }

    void idle() {
        HostWindow::pump();
        plugin.getEditor()->idle();
        HostWindow::pump();
    }
    int scaled(int coordinate) const { return static_cast<int>(std::lround(coordinate * scale)); }

    const Pictures pictures;
    const double scale = GetParam();
    const std::unique_ptr<ZelvatoneEngine> engine = std::make_unique<ZelvatoneEngine>();
    VSTGuiVSTInterface plugin{hostOfNothing, engine.get(), 61546};
    HostWindow window{scaled(717), scaled(477)};
};

TEST_P(ScaledEditor, FillsAWindowOfItsSize) {
    RECT rect{};
    GetClientRect(window.editor(), &rect);
    EXPECT_EQ(rect.right, scaled(717));
    EXPECT_EQ(rect.bottom, scaled(477));
    save(window.picture(), "scaled-" + std::to_string(static_cast<int>(scale * 100)) + ".png");
}

TEST_P(ScaledEditor, GivesTheSameValueForTheSameAngle) {
    window.press(scaled(kKnobX), scaled(kKnobY - 20));
    window.move(scaled(kKnobX + 20), scaled(kKnobY));
    window.release(scaled(kKnobX + 20), scaled(kKnobY));
    EXPECT_NEAR(plugin.getParameter(kSustain), 0.8333333F, 0.02F);
    idle();
}

// The top of the face has no controls.
TEST_P(ScaledEditor, ShowsThePicturesMadeForTwiceItsSizePixelByPixel) {
    if (scale != 2) {
        GTEST_SKIP() << "at 2 only";
    }
    Gdiplus::Bitmap file(std::filesystem::path(ZELVATONE_RESOURCES "/2x/BACKGROUND.PNG").c_str());
    ASSERT_EQ(file.GetWidth(), 1434U);
    const WindowPicture shown = window.picture();
    int wrong = 0;
    for (int y = 0; y < 80; ++y) {
        for (int x = 0; x < shown.width; ++x) {
            Gdiplus::Color color;
            file.GetPixel(x, y, &color);
            wrong += (color.GetValue() & 0xFFFFFF) != shown.at(x, y) ? 1 : 0;
        }
    }
    EXPECT_EQ(wrong, 0);
}

INSTANTIATE_TEST_SUITE_P(At, ScaledEditor, testing::Values(1., 1.5, 2., 3.));

} // namespace
} // namespace zelvatone::test
