// Pictures, text and drawing by Cairo and Pango.
#pragma once

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/platform/iplatformbitmap.h"
#include "vstgui/lib/platform/iplatformfont.h"

#include <cairo/cairo.h>

#include <cstdint>
#include <memory>
#include <string>

namespace VSTGUI {

struct CairoDeleter {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoDeleter>;

// Decodes a PNG file of `size` bytes at `data`; null if it is none.
PlatformBitmapPtr decodeCairoBitmap(const void* data, std::uint32_t size);
// The installed font that is nearest to `name`, `size` pixels high, with CTxtFace flags.
PlatformFontPtr makeCairoFont(const std::string& name, CCoord size, std::int32_t style);
// An address in Pango's library.
const void* pangoSymbol();

// Draws what lies in `rect` of the window, whole pixels, into a picture of that size.
class CairoContext final : public CDrawContext {
public:
    CairoContext(cairo_format_t format, const CRect& rect);

    void drawBitmap(const IPlatformBitmap& picture, const CRect& rect,
                    const CPoint& offset) override;
    void fillRect(const CRect& rect, const CColor& color) override;
    void frameRect(const CRect& rect, const CColor& color) override;
    void drawString(const IPlatformFont& font, const std::string& text, const CPoint& baseline,
                    const CRect& clip, const CColor& color) override;

    // The picture, with all that was drawn so far in its memory.
    cairo_surface_t* flushedSurface() const;

private:
    CairoSurface surface;
    std::unique_ptr<cairo_t, CairoDeleter> context;
};

} // namespace VSTGUI
