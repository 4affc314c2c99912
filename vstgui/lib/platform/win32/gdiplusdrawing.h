// Pictures, text and drawing by GDI+.
#pragma once

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/platform/iplatformbitmap.h"
#include "vstgui/lib/platform/iplatformfont.h"

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>

namespace Gdiplus {
class Bitmap;
class Graphics;
} // namespace Gdiplus

namespace VSTGUI {

// GDI+ works while one of these exists. Never within DllMain.
class GdiplusSession {
public:
    GdiplusSession();
    ~GdiplusSession();
    GdiplusSession(const GdiplusSession&) = delete;
    GdiplusSession& operator=(const GdiplusSession&) = delete;

private:
    ULONG_PTR token = 0;
};

// Decodes a PNG file of `size` bytes at `data`; null if it is none.
PlatformBitmapPtr decodeGdiplusBitmap(const void* data, std::uint32_t size);
// The installed font that is nearest to `name`, `size` pixels high, with CTxtFace flags.
PlatformFontPtr makeGdiplusFont(const std::string& name, CCoord size, std::int32_t style);

// Draws what lies in `rect` of the window, whole pixels, into a picture of that size.
class GdiplusContext final : public CDrawContext {
public:
    explicit GdiplusContext(const CRect& rect);
    ~GdiplusContext() override;

    void drawBitmap(const IPlatformBitmap& source, const CRect& rect,
                    const CPoint& offset) override;
    void fillRect(const CRect& rect, const CColor& color) override;
    void frameRect(const CRect& rect, const CColor& color) override;
    void drawString(const IPlatformFont& font, const std::string& text, const CPoint& baseline,
                    const CRect& clip, const CColor& color) override;

    // Puts the picture where it belongs in the window.
    void copyTo(HDC window) const;

private:
    CRect area;
    std::unique_ptr<Gdiplus::Bitmap> picture;
    std::unique_ptr<Gdiplus::Graphics> graphics;
};

} // namespace VSTGUI
