#include "tests/vstgui/Pictures.h"

#include "vstgui/lib/platform/platformfactory.h"

#include <cairo/cairo.h>

namespace VSTGUI::test {
namespace {

cairo_status_t append(void* closure, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(closure)->append(data, data + length);
    return CAIRO_STATUS_SUCCESS;
}

CBitmap* decode(const std::string& bytes) {
    return new CBitmap(getPlatformFactory().createBitmapFromMemory(
        bytes.data(), static_cast<std::uint32_t>(bytes.size())));
}

} // namespace

std::string makePng(int width, int height, const std::function<CColor(int x, int y)>& color) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    cairo_t* context = cairo_create(surface);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const CColor c = color(x, y);
            cairo_set_source_rgba(context, c.red / 255.0, c.green / 255.0, c.blue / 255.0,
                                  c.alpha / 255.0);
            cairo_rectangle(context, x, y, 1, 1);
            cairo_fill(context);
        }
    }
    cairo_destroy(context);
    std::string bytes;
    cairo_surface_write_to_png_stream(surface, append, &bytes);
    cairo_surface_destroy(surface);
    return bytes;
}

CBitmap* makePicture(int width, int height, const std::function<CColor(int x, int y)>& color) {
    return decode(makePng(width, height, color));
}

CColor stripColor(int index) {
    const auto step = static_cast<std::uint8_t>(index * 8);
    return {step, static_cast<std::uint8_t>(255 - step), 40};
}

CBitmap* makeStrip() {
    static const std::string bytes =
        makePng(48, 30 * 48, [](int, int y) { return stripColor(y / 48); });
    return decode(bytes);
}

} // namespace VSTGUI::test
