#include "tests/editor/Face.h"

#include <cairo/cairo.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>
#include <stdexcept>

namespace zelvatone::test {
namespace {

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;

Surface load(const std::string& name) {
    const std::string path = ZELVATONE_RESOURCES "/" + name;
    Surface picture(cairo_image_surface_create_from_png(path.c_str()), cairo_surface_destroy);
    if (cairo_surface_status(picture.get()) != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error("no picture " + path);
    }
    return picture;
}

// Draws on black. Returns the picture.
Screenshot paint(int width, int height, const std::function<void(cairo_t*)>& draw) {
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height),
                          cairo_surface_destroy);
    cairo_t* context = cairo_create(surface.get());
    draw(context);
    cairo_destroy(context);
    cairo_surface_flush(surface.get());
    const unsigned char* bytes = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    Screenshot shot{width, height, {}};
    for (int y = 0; y < height; ++y) {
        const auto* row = reinterpret_cast<const Pixel*>(bytes + y * stride);
        std::transform(row, row + width, std::back_inserter(shot.pixels),
                       [](Pixel pixel) { return pixel & 0xffffff; });
    }
    return shot;
}

int channelDifference(Pixel a, Pixel b, int shift) {
    return std::abs(static_cast<int>(a >> shift & 255) - static_cast<int>(b >> shift & 255));
}

int difference(Pixel a, Pixel b) {
    return std::max(
        {channelDifference(a, b, 16), channelDifference(a, b, 8), channelDifference(a, b, 0)});
}

} // namespace

const Knob kAllKnobs[kKnobs] = {
    {0, 296, 106},  {1, 379, 106},  {15, 462, 106}, {7, 545, 106}, {12, 628, 106}, {17, 296, 199},
    {2, 379, 199},  {3, 462, 199},  {16, 545, 199}, {4, 30, 397},  {5, 96, 397},   {6, 162, 397},
    {8, 30, 106},   {14, 96, 106},  {13, 162, 106}, {9, 30, 260},  {10, 96, 260},  {11, 162, 260},
    {18, 296, 397}, {19, 362, 397}, {20, 428, 397}, {21, 494, 397}};

const Knob& knobOf(int parameter) {
    return *std::ranges::find(kAllKnobs, parameter, &Knob::parameter);
}

Screenshot readPicture(const std::string& name) {
    const Surface picture = load(name);
    return paint(cairo_image_surface_get_width(picture.get()),
                 cairo_image_surface_get_height(picture.get()), [&](cairo_t* context) {
                     cairo_set_source_surface(context, picture.get(), 0, 0);
                     cairo_paint(context);
                 });
}

Screenshot knobPicture(const Knob& knob, int frame) {
    static const Surface background = load("BACKGROUND.PNG");
    static const Surface strip = load("ANIMKNOB.PNG");
    return paint(48, 48, [&](cairo_t* context) {
        cairo_set_source_surface(context, background.get(), -knob.left, -knob.top);
        cairo_paint(context);
        cairo_set_source_surface(context, strip.get(), 0, -48.0 * frame);
        cairo_paint(context);
    });
}

Screenshot cutOut(const Screenshot& shot, const Area& area) {
    Screenshot part{area.width(), area.height(), {}};
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) {
            part.pixels.push_back(shot.at(x, y));
        }
    }
    return part;
}

bool areAlike(const Screenshot& a, const Screenshot& b, int tolerance) {
    return a.width == b.width &&
           std::ranges::equal(a.pixels, b.pixels, [tolerance](Pixel one, Pixel other) {
               return difference(one, other) <= tolerance;
           });
}

int frameShown(const VSTGUI::test::HostWindow& window, int parameter) {
    const Knob& knob = knobOf(parameter);
    const Screenshot shown = window.screenshot(knob.left, knob.top, 48, 48);
    for (int frame = 0; frame < 30; ++frame) {
        if (areAlike(shown, knobPicture(knob, frame), 2)) {
            return frame;
        }
    }
    return -1;
}

Area inkIn(const Screenshot& shot, const Area& area) {
    static const Screenshot background = readPicture("BACKGROUND.PNG");
    constexpr int kVisible = 60; // the fainter half of a letter's smoothed edge is not counted
    Area ink{area.right, area.bottom, area.left, area.top};
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) {
            if (difference(shot.at(x, y), background.at(x, y)) > kVisible) {
                ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 1),
                       std::max(ink.bottom, y + 1)};
            }
        }
    }
    return ink;
}

} // namespace zelvatone::test
