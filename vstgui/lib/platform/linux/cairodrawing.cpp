#include "vstgui/lib/platform/linux/cairodrawing.h"

#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/cfont.h"

#include <pango/pangocairo.h>

#include <cmath>
#include <cstddef>
#include <cstring>
#include <utility>

namespace VSTGUI {
namespace {

struct GObjectDeleter {
    void operator()(void* object) const { g_object_unref(object); }
};
using PangoContextPtr = std::unique_ptr<PangoContext, GObjectDeleter>;
using PangoLayoutPtr = std::unique_ptr<PangoLayout, GObjectDeleter>;

class CairoBitmap final : public IPlatformBitmap {
public:
    explicit CairoBitmap(CairoSurface picture) : picture(std::move(picture)) {}

    CPoint getSize() const override {
        return {static_cast<CCoord>(cairo_image_surface_get_width(picture.get())),
                static_cast<CCoord>(cairo_image_surface_get_height(picture.get()))};
    }
    // The picture as it is seen at `scale`. Scaled once, and not at each drawing: whatever part of
    // the window is drawn, its pixels come out the same.
    cairo_surface_t* surfaceAt(double scale) const {
        if (scale == getScaleFactor()) {
            return picture.get();
        }
        if (!scaled || scale != scaledTo) {
            scaled = scaledCopy(scale / getScaleFactor());
            scaledTo = scale;
        }
        return scaled.get();
    }

private:
    CairoSurface scaledCopy(double factor) const {
        const CPoint size = getSize();
        const int width = static_cast<int>(std::lround(size.x * factor));
        const int height = static_cast<int>(std::lround(size.y * factor));
        CairoSurface copy(cairo_surface_create_similar_image(
            picture.get(), cairo_image_surface_get_format(picture.get()), width, height));
        const std::unique_ptr<cairo_t, CairoDeleter> to(cairo_create(copy.get()));
        // To whole pixels: the edges of the picture stay its edges.
        cairo_scale(to.get(), width / size.x, height / size.y);
        cairo_set_source_surface(to.get(), picture.get(), 0, 0);
        cairo_pattern_set_filter(cairo_get_source(to.get()), CAIRO_FILTER_BEST);
        cairo_pattern_set_extend(cairo_get_source(to.get()), CAIRO_EXTEND_PAD);
        cairo_set_operator(to.get(), CAIRO_OPERATOR_SOURCE);
        cairo_paint(to.get());
        return copy;
    }

    CairoSurface picture;
    mutable CairoSurface scaled; // for `scaledTo`; null before it was asked for
    mutable double scaledTo = 0;
};

class CairoFont final : public IPlatformFont {
public:
    CairoFont(const std::string& name, CCoord size, std::int32_t style)
        : context(pango_font_map_create_context(pango_cairo_font_map_get_default())) {
        PangoFontDescription* description = pango_font_description_new();
        pango_font_description_set_family(description, name.c_str());
        pango_font_description_set_absolute_size(description, size * PANGO_SCALE);
        if ((style & kBoldFace) != 0) {
            pango_font_description_set_weight(description, PANGO_WEIGHT_BOLD);
        }
        if ((style & kItalicFace) != 0) {
            pango_font_description_set_style(description, PANGO_STYLE_ITALIC);
        }
        pango_context_set_font_description(context.get(), description);
        pango_font_description_free(description);
        useWholePixels();

        PangoRectangle ink{};
        pango_layout_get_pixel_extents(layoutOf("M").get(), &ink, nullptr);
        capHeight = ink.height;
    }

    CCoord getCapHeight() const override { return capHeight; }
    CCoord getStringWidth(const std::string& text) const override {
        int width = 0;
        pango_layout_get_pixel_size(layoutOf(text).get(), &width, nullptr);
        return width;
    }
    PangoLayoutPtr layoutOf(const std::string& text) const {
        PangoLayoutPtr layout(pango_layout_new(context.get()));
        pango_layout_set_single_paragraph_mode(layout.get(), 1);
        // Pango would complain on the host's terminal about bytes that are no UTF-8.
        char* valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
        pango_layout_set_text(layout.get(), valid, -1);
        g_free(valid);
        return layout;
    }

private:
    // Grey edges, not coloured ones, whatever the desktop prefers: the text lies on pictures. Whole
    // pixels between the letters, so that a text is as wide as it is measured.
    void useWholePixels() {
        cairo_font_options_t* options = cairo_font_options_create();
        cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
        cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_ON);
        pango_cairo_context_set_font_options(context.get(), options);
        cairo_font_options_destroy(options);
    }

    PangoContextPtr context;
    CCoord capHeight = 0;
};

struct Bytes {
    const unsigned char* next;
    std::size_t left;
};

cairo_status_t readBytes(void* closure, unsigned char* to, unsigned int length) {
    auto* bytes = static_cast<Bytes*>(closure);
    if (length > bytes->left) {
        return CAIRO_STATUS_READ_ERROR;
    }
    std::memcpy(to, bytes->next, length);
    bytes->next += length;
    bytes->left -= length;
    return CAIRO_STATUS_SUCCESS;
}

void setSource(cairo_t* context, const CColor& color) {
    cairo_set_source_rgba(context, color.red / 255.0, color.green / 255.0, color.blue / 255.0,
                          color.alpha / 255.0);
}

void addRect(cairo_t* context, const CRect& rect) {
    cairo_rectangle(context, rect.left, rect.top, rect.getWidth(), rect.getHeight());
}

} // namespace

PlatformBitmapPtr decodeCairoBitmap(const void* data, std::uint32_t size) {
    Bytes bytes{static_cast<const unsigned char*>(data), size};
    CairoSurface surface(cairo_image_surface_create_from_png_stream(readBytes, &bytes));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
        return {};
    }
    return makeOwned<CairoBitmap>(std::move(surface));
}

PlatformFontPtr makeCairoFont(const std::string& name, CCoord size, std::int32_t style) {
    return makeOwned<CairoFont>(name, size, style);
}

const void* pangoSymbol() {
    return reinterpret_cast<const void*>(&pango_cairo_font_map_get_default);
}

CairoContext::CairoContext(cairo_format_t format, const CRect& rect)
    : surface(cairo_image_surface_create(format, static_cast<int>(rect.getWidth()),
                                         static_cast<int>(rect.getHeight()))),
      context(cairo_create(surface.get())) {
    cairo_translate(context.get(), -rect.left, -rect.top);
    // Opaque from the start: a window whose pixels carry opacity must not show what is behind it.
    cairo_paint(context.get());
}

void CairoContext::drawBitmap(const IPlatformBitmap& picture, const CRect& rect,
                              const CPoint& offset) {
    cairo_surface_t* source = static_cast<const CairoBitmap&>(picture).surfaceAt(getScaleFactor());
    const CRect target = inWindow(rect);
    const CPoint from = inWindow(offset);
    cairo_set_source_surface(context.get(), source, target.left - std::round(from.x),
                             target.top - std::round(from.y));
    addRect(context.get(), target);
    cairo_fill(context.get());
}

void CairoContext::fillRect(const CRect& rect, const CColor& color) {
    setSource(context.get(), color);
    addRect(context.get(), inWindow(rect));
    cairo_fill(context.get());
}

void CairoContext::frameRect(const CRect& rect, const CColor& color) {
    setSource(context.get(), color);
    const double width = lineWidth();
    cairo_set_line_width(context.get(), width);
    // The line's middle runs half its width inside the edge.
    addRect(context.get(), inWindow(rect).inset(width / 2, width / 2));
    cairo_stroke(context.get());
}

void CairoContext::drawString(const IPlatformFont& font, const std::string& text,
                              const CPoint& baseline, const CRect& clip, const CColor& color) {
    const PangoLayoutPtr layout = static_cast<const CairoFont&>(font).layoutOf(text);
    cairo_save(context.get());
    addRect(context.get(), inWindow(clip));
    cairo_clip(context.get());
    setSource(context.get(), color);
    const CPoint start = inWindow(baseline);
    cairo_move_to(context.get(), start.x, start.y);
    pango_cairo_show_layout_line(context.get(), pango_layout_get_line_readonly(layout.get(), 0));
    cairo_restore(context.get());
}

cairo_surface_t* CairoContext::flushedSurface() const {
    cairo_surface_flush(surface.get());
    return surface.get();
}

} // namespace VSTGUI
