// The editor in the window of a host that tells a scale. Leaves a picture of each in the build
// folder.
#include "tests/editor/Face.h"
#include "tests/vstgui/HostWindow.h"
#include "tests/vstgui/XServer.h"

#include "engine/ZelvatoneEngine.h"
#include "plugin/VSTGuiVSTInterface.h"
#include "vstguieditor/vstguieditor.h"

#include <cairo/cairo.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <functional>
#include <memory>
#include <thread>

namespace zelvatone::test {
namespace {

using VSTGUI::test::Host;
using VSTGUI::test::HostWindow;

constexpr int kSustain = 20;

VstIntPtr hostOfNothing(AEffect*, VstInt32, VstInt32, VstIntPtr, void*, float) {
    return 0;
}

void save(const Screenshot& shot, const std::filesystem::path& path) {
    std::filesystem::create_directories(path.parent_path());
    auto pixels = shot.pixels;
    cairo_surface_t* surface = cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(pixels.data()), CAIRO_FORMAT_RGB24, shot.width,
        shot.height, shot.width * 4);
    cairo_surface_write_to_png(surface, path.c_str());
    cairo_surface_destroy(surface);
}

// The editor of a plug-in that is part of this program, open at a scale.
class EditorAtScale : public testing::TestWithParam<double> {
protected:
    void SetUp() override {
        if (const std::string why = VSTGUI::test::XServer::start(); !why.empty()) {
            GTEST_SKIP() << why;
        }
        plugin.setEditorScale(scale);
        ERect* rect = nullptr;
        ASSERT_TRUE(plugin.getEditor()->getRect(&rect));
        width = rect->right;
        height = rect->bottom;
        window = std::make_unique<HostWindow>(Host::kPlain, width, height);
        ASSERT_TRUE(plugin.getEditor()->open(window->handle()));
        ASSERT_TRUE(idleUntil([&] { return window->pixel(width - 1, height - 1) != 0; }));
        idleAWhile();
    }
    void TearDown() override { plugin.getEditor()->close(); }

    bool idleUntil(const std::function<bool()>& isReached) {
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (std::chrono::steady_clock::now() < limit) {
            plugin.getEditor()->idle();
            if (isReached()) {
                return true;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return false;
    }
    void idleAWhile() {
        for (int i = 0; i < 5; ++i) {
            plugin.getEditor()->idle();
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }

    Screenshot look() const { return window->screenshot(0, 0, width, height); }
    int scaled(int coordinate) const { return static_cast<int>(std::lround(coordinate * scale)); }
    Area scaled(const Area& area) const {
        return {scaled(area.left), scaled(area.top), scaled(area.right), scaled(area.bottom)};
    }
    void moveTo(Point point) { window->movePointer(scaled(point.x), scaled(point.y)); }
    void click(Point point) { window->click(scaled(point.x), scaled(point.y)); }

    const double scale = GetParam();
    int width = 0;
    int height = 0;
    std::unique_ptr<HostWindow> window;
    const std::unique_ptr<ZelvatoneEngine> engine = std::make_unique<ZelvatoneEngine>();
    VSTGuiVSTInterface plugin{hostOfNothing, engine.get(), 61546};
};

// How far the brightest and the darkest pixel around (x, y) are apart, in green.
int contrastAround(const Screenshot& shot, int x, int y) {
    int least = 255;
    int most = 0;
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx) {
            const int green = static_cast<int>(shot.at(x + dx, y + dy) >> 8 & 255);
            least = std::min(least, green);
            most = std::max(most, green);
        }
    }
    return most - least;
}

// The smallest area of `place` that holds all that is nearly white.
Area whiteIn(const Screenshot& shot, const Area& place) {
    Area ink{place.right, place.bottom, place.left, place.top};
    for (int y = place.top; y < place.bottom; ++y) {
        for (int x = place.left; x < place.right; ++x) {
            if ((shot.at(x, y) & 255) > 130) {
                ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 1),
                       std::max(ink.bottom, y + 1)};
            }
        }
    }
    return ink;
}

TEST_P(EditorAtScale, HasAWindowOfTheSizeThatItTells) {
    EXPECT_EQ(width, scaled(kWidth));
    EXPECT_EQ(height, scaled(kHeight));
    ASSERT_EQ(window->children().size(), 1U);
    EXPECT_EQ(window->sizeOf(window->children()[0]), (std::pair{width, height}));
    save(look(), std::filesystem::path(ZELVATONE_PICTURES) /
                     ("editor-" + std::to_string(static_cast<int>(scale * 100)) + ".png"));
}

// Letters as high as their scale wants, in the middle of their place, with edges no softer than
// those of text that was laid out at its size.
TEST_P(EditorAtScale, WritesNamesAndValuesAtTheirFinalSize) {
    const Screenshot shot = look();
    for (const Knob& knob : kAllKnobs) {
        for (const Area& place : {scaled(knob.label()), scaled(knob.display())}) {
            const Area ink = whiteIn(shot, place);
            // Nine pixels at scale 1; a y reaches three further down.
            EXPECT_GE(ink.height(), 8 * scale) << knob.parameter;
            EXPECT_LE(ink.height(), 13 * scale) << knob.parameter;
            EXPECT_NEAR(ink.left - place.left, place.right - ink.right, 4 * scale)
                << knob.parameter;
            EXPECT_NEAR(ink.top, place.top + 6 * scale, 1 + scale) << knob.parameter;
            bool isSharp = false;
            for (int y = ink.top; y < ink.bottom && !isSharp; ++y) {
                isSharp = contrastAround(shot, ink.left, y) > 150;
            }
            EXPECT_TRUE(isSharp) << knob.parameter;
        }
    }
}

// Straight up is half, to the right is a third of the range more, whatever the size.
TEST_P(EditorAtScale, GivesTheSameValueForTheSameAngle) {
    const Point centre = knobOf(kSustain).centre();
    moveTo({centre.x, centre.y - 20});
    window->press();
    moveTo({centre.x + 20, centre.y});
    EXPECT_TRUE(
        idleUntil([&] { return std::abs(plugin.getParameter(kSustain) - 0.8333333F) < 0.02F; }));
    moveTo({centre.x, centre.y - 100});
    EXPECT_TRUE(idleUntil([&] { return std::abs(plugin.getParameter(kSustain) - 0.5F) < 0.01F; }));
    window->release();
    idleAWhile();
}

TEST_P(EditorAtScale, LooksTheSameAfterAKnobHasComeBack) {
    const Screenshot before = look();
    const float value = plugin.getParameter(kSustain);
    plugin.setParameter(kSustain, 0.1F);
    idleAWhile();
    EXPECT_FALSE(areAlike(look(), before));
    plugin.setParameter(kSustain, value);
    plugin.setParameter(kSustain, value); // now with the text of the value
    EXPECT_TRUE(idleUntil([&] { return areAlike(look(), before); }));
}

TEST_P(EditorAtScale, OpensItsHelpWhereItsMarkIsSeen) {
    const Screenshot before = look();
    click({562, 17});
    EXPECT_TRUE(idleUntil([&] { return !areAlike(look(), before); }));
    const Screenshot index = look();
    click({696, 274}); // the last corner of a panel
    EXPECT_TRUE(idleUntil([&] { return !areAlike(look(), index) && !areAlike(look(), before); }));
    click({350, 300});
    EXPECT_TRUE(idleUntil([&] { return areAlike(look(), index); }));
    click({700, 460}); // beside the panels
    EXPECT_TRUE(idleUntil([&] { return areAlike(look(), before); }));
}

INSTANTIATE_TEST_SUITE_P(Of, EditorAtScale, testing::Values(1., 1.25, 1.5, 2., 3.),
                         [](const auto& scale) {
                             return "Percent" + std::to_string(static_cast<int>(scale.param * 100));
                         });

class EditorAtTwiceItsSize : public EditorAtScale {};

TEST_P(EditorAtTwiceItsSize, ShowsThePicturesThatWereMadeForItPixelByPixel) {
    const Screenshot shot = look();
    const Screenshot background = readPicture("2x/BACKGROUND.PNG");
    int wrong = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool isControl = std::ranges::any_of(kAllKnobs, [=](const Knob& knob) {
                return knob.area().holds(x / 2, y / 2) || knob.label().holds(x / 2, y / 2) ||
                       knob.display().holds(x / 2, y / 2);
            });
            wrong += !isControl && shot.at(x, y) != background.at(x, y);
        }
    }
    EXPECT_EQ(wrong, 0);
    click({562, 17});
    EXPECT_TRUE(idleUntil([&] { return areAlike(look(), readPicture("2x/HELPOVERLAY.PNG")); }));
}

INSTANTIATE_TEST_SUITE_P(Of, EditorAtTwiceItsSize, testing::Values(2.));

} // namespace
} // namespace zelvatone::test
