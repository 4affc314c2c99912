#include "vstgui/lib/platform/win32/gdiplusdrawing.h"

#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/cfont.h"
#include "vstgui/lib/platform/win32/win32string.h"

#include <objidl.h>

#include <gdiplus.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <utility>

namespace VSTGUI {
namespace {

// Opacity already multiplied into the colours: what GDI+ blends fastest.
constexpr Gdiplus::PixelFormat kPixels = PixelFormat32bppPARGB;

// A picture's pixels in memory, while this exists.
class LockedPixels {
public:
    LockedPixels(Gdiplus::Bitmap& bitmap, Gdiplus::ImageLockMode mode) : bitmap(bitmap) {
        const auto width = static_cast<INT>(bitmap.GetWidth());
        const auto height = static_cast<INT>(bitmap.GetHeight());
        const Gdiplus::Rect all(0, 0, width, height);
        isLocked = bitmap.LockBits(&all, mode, kPixels, &pixels) == Gdiplus::Ok;
    }
    ~LockedPixels() {
        if (isLocked) {
            bitmap.UnlockBits(&pixels);
        }
    }
    LockedPixels(const LockedPixels&) = delete;
    LockedPixels& operator=(const LockedPixels&) = delete;

    explicit operator bool() const { return isLocked; }
    BYTE* row(UINT y) const {
        return static_cast<BYTE*>(pixels.Scan0) + static_cast<std::ptrdiff_t>(y) * pixels.Stride;
    }
    std::size_t rowBytes() const { return pixels.Width * sizeof(Gdiplus::ARGB); }

private:
    Gdiplus::Bitmap& bitmap;
    Gdiplus::BitmapData pixels{};
    bool isLocked = false;
};

struct StreamDeleter {
    void operator()(IStream* stream) const { stream->Release(); }
};
using StreamPtr = std::unique_ptr<IStream, StreamDeleter>;

// GDI+ knows many kinds of picture; only PNG is wanted.
bool isPng(const void* data, std::uint32_t size) {
    constexpr std::array<unsigned char, 8> kSignature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    return size > kSignature.size() && std::memcmp(data, kSignature.data(), kSignature.size()) == 0;
}

// Null without memory for it.
StreamPtr streamOf(const void* data, std::uint32_t size) {
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    if (!memory) {
        return {};
    }
    std::memcpy(GlobalLock(memory), data, size);
    GlobalUnlock(memory);
    IStream* stream = nullptr;
    constexpr BOOL kStreamFreesMemory = TRUE;
    if (CreateStreamOnHGlobal(memory, kStreamFreesMemory, &stream) != S_OK) {
        GlobalFree(memory);
    }
    return StreamPtr(stream);
}

// GDI+ decodes when it likes, from a stream that must stay: the copy has its pixels with it. Null
// if the file is damaged.
std::unique_ptr<Gdiplus::Bitmap> decodedCopy(Gdiplus::Bitmap& file) {
    const LockedPixels from(file, Gdiplus::ImageLockModeRead);
    if (!from) {
        return {};
    }
    auto copy = std::make_unique<Gdiplus::Bitmap>(static_cast<INT>(file.GetWidth()),
                                                  static_cast<INT>(file.GetHeight()), kPixels);
    const LockedPixels to(*copy, Gdiplus::ImageLockModeWrite);
    if (!to) {
        return {};
    }
    for (UINT y = 0; y < copy->GetHeight(); ++y) {
        std::memcpy(to.row(y), from.row(y), to.rowBytes());
    }
    return copy;
}

class GdiplusBitmap final : public IPlatformBitmap {
public:
    explicit GdiplusBitmap(std::unique_ptr<Gdiplus::Bitmap> picture)
        : picture(std::move(picture)) {}

    CPoint getSize() const override {
        return {static_cast<CCoord>(picture->GetWidth()),
                static_cast<CCoord>(picture->GetHeight())};
    }
    // The picture as it is seen at `scale`. Scaled once, and not at each drawing: whatever part of
    // the window is drawn, its pixels come out the same. GDI+ takes pictures that it only reads as
    // changeable ones.
    Gdiplus::Bitmap& bitmapAt(double scale) const {
        if (scale == getScaleFactor()) {
            return *picture;
        }
        if (!scaled || scale != scaledTo) {
            scaled = scaledCopy(scale / getScaleFactor());
            scaledTo = scale;
        }
        return *scaled;
    }

private:
    std::unique_ptr<Gdiplus::Bitmap> scaledCopy(double factor) const {
        const CPoint size = getSize();
        const auto width = static_cast<INT>(std::lround(size.x * factor));
        const auto height = static_cast<INT>(std::lround(size.y * factor));
        auto copy = std::make_unique<Gdiplus::Bitmap>(width, height, kPixels);
        Gdiplus::Graphics to(copy.get());
        to.SetCompositingMode(Gdiplus::CompositingModeSourceCopy);
        to.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
        to.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
        // Beyond its edges the picture goes on mirrored: an opaque one stays opaque to its edges.
        Gdiplus::ImageAttributes edges;
        edges.SetWrapMode(Gdiplus::WrapModeTileFlipXY);
        to.DrawImage(picture.get(), Gdiplus::Rect(0, 0, width, height), 0, 0,
                     static_cast<INT>(size.x), static_cast<INT>(size.y), Gdiplus::UnitPixel,
                     &edges);
        return copy;
    }

    std::unique_ptr<Gdiplus::Bitmap> picture;
    mutable std::unique_ptr<Gdiplus::Bitmap> scaled; // for `scaledTo`; null before it was asked for
    mutable double scaledTo = 0;
};

Gdiplus::REAL real(CCoord coordinate) {
    return static_cast<Gdiplus::REAL>(coordinate);
}

Gdiplus::RectF realRect(const CRect& rect) {
    return {real(rect.left), real(rect.top), real(rect.getWidth()), real(rect.getHeight())};
}

Gdiplus::Color colorOf(const CColor& color) {
    return {color.alpha, color.red, color.green, color.blue};
}

// Grey edges, not coloured ones, whatever the desktop prefers: the text lies on pictures.
void useGreyEdges(Gdiplus::Graphics& graphics) {
    graphics.SetTextRenderingHint(Gdiplus::TextRenderingHintAntiAliasGridFit);
}

// One line, without the margins that GDI+ adds to texts by default.
class LineFormat final : public Gdiplus::StringFormat {
public:
    LineFormat() : StringFormat(GenericTypographic()) {
        SetFormatFlags(GetFormatFlags() | Gdiplus::StringFormatFlagsNoWrap |
                       Gdiplus::StringFormatFlagsMeasureTrailingSpaces);
    }
};

INT fontStyleOf(std::int32_t face) {
    INT style = Gdiplus::FontStyleRegular;
    if ((face & kBoldFace) != 0) {
        style |= Gdiplus::FontStyleBold;
    }
    if ((face & kItalicFace) != 0) {
        style |= Gdiplus::FontStyleItalic;
    }
    return style;
}

// What the desktop writes its own messages with; empty if it does not tell.
std::wstring desktopFontName() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    const bool isTold =
        SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0) != FALSE;
    return isTold ? metrics.lfMessageFont.lfFaceName : L"";
}

// The family `name`, or the nearest one that is installed: GDI+'s own sans-serif, which is missing
// where a desktop has not brought the usual fonts, then the desktop's, then any. Without a font at
// all the family is not available, and nothing is written.
std::unique_ptr<Gdiplus::FontFamily> installedFamily(const std::wstring& name) {
    auto family = std::make_unique<Gdiplus::FontFamily>(name.c_str());
    if (!family->IsAvailable()) {
        if (const auto* generic = Gdiplus::FontFamily::GenericSansSerif()) {
            family.reset(generic->Clone());
        }
    }
    if (!family->IsAvailable()) {
        family = std::make_unique<Gdiplus::FontFamily>(desktopFontName().c_str());
    }
    if (!family->IsAvailable()) {
        const Gdiplus::InstalledFontCollection installed;
        INT found = 0;
        installed.GetFamilies(1, family.get(), &found);
    }
    return family;
}

class GdiplusFont final : public IPlatformFont {
public:
    GdiplusFont(const std::string& name, CCoord size, std::int32_t face)
        : measuring(1, 1, kPixels), graphics(&measuring) {
        useGreyEdges(graphics);
        const auto family = installedFamily(wideString(name));
        const INT style = fontStyleOf(face);
        font = std::make_unique<Gdiplus::Font>(family.get(), real(size), style, Gdiplus::UnitPixel);
        capHeight = inkHeight(*family, style, L"M");
    }

    CCoord getCapHeight() const override { return capHeight; }
    CCoord getStringWidth(const std::string& text) const override {
        const std::wstring wide = wideString(text);
        Gdiplus::RectF extent;
        graphics.MeasureString(wide.data(), static_cast<INT>(wide.size()), font.get(),
                               Gdiplus::PointF(), &format, &extent);
        return extent.Width;
    }
    void draw(Gdiplus::Graphics& to, const std::string& text, const CPoint& baseline,
              const CColor& color) const {
        const std::wstring wide = wideString(text);
        const Gdiplus::SolidBrush brush(colorOf(color));
        // Letters by their characters, one after the other, on a baseline: the call that lays out
        // texts takes their top, and where that puts the baseline is its own secret.
        constexpr INT kOptions =
            Gdiplus::DriverStringOptionsCmapLookup | Gdiplus::DriverStringOptionsRealizedAdvance;
        static_assert(sizeof(wchar_t) == sizeof(UINT16));
        // Whole pixels, or else the letters' stems and feet are smeared over two.
        const Gdiplus::PointF origin(real(std::round(baseline.x)), real(std::round(baseline.y)));
        to.DrawDriverString(reinterpret_cast<const UINT16*>(wide.data()),
                            static_cast<INT>(wide.size()), font.get(), &brush, &origin, kOptions,
                            nullptr);
    }

private:
    // In rows of pixels that the text touches.
    CCoord inkHeight(const Gdiplus::FontFamily& family, INT style, const wchar_t* text) const {
        Gdiplus::GraphicsPath outline;
        outline.AddString(text, -1, &family, style, font->GetSize(), Gdiplus::PointF(), &format);
        Gdiplus::RectF ink;
        outline.GetBounds(&ink);
        return std::ceil(ink.Height);
    }

    LineFormat format;
    Gdiplus::Bitmap measuring; // never drawn on
    Gdiplus::Graphics graphics;
    std::unique_ptr<Gdiplus::Font> font;
    CCoord capHeight = 0;
};

template<class Object>
void forget(void*& kept) {
    delete static_cast<Object*>(std::exchange(kept, nullptr));
}

} // namespace

GdiplusSession::GdiplusSession() {
    const Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&token, &input, nullptr);
}

// The header keeps for ever what it has once handed out, and the next session would get dead ones.
GdiplusSession::~GdiplusSession() {
    forget<Gdiplus::StringFormat>(Gdiplus::_GdipStringFormatCachedGenericTypographic);
    forget<Gdiplus::FontFamily>(Gdiplus::_GdipFontFamilyCachedGenericSansSerif);
    Gdiplus::GdiplusShutdown(token);
}

PlatformBitmapPtr decodeGdiplusBitmap(const void* data, std::uint32_t size) {
    if (!data || !isPng(data, size)) {
        return {};
    }
    const StreamPtr stream = streamOf(data, size);
    if (!stream) {
        return {};
    }
    Gdiplus::Bitmap file(stream.get());
    if (file.GetLastStatus() != Gdiplus::Ok) {
        return {};
    }
    auto copy = decodedCopy(file);
    if (!copy) {
        return {};
    }
    return makeOwned<GdiplusBitmap>(std::move(copy));
}

PlatformFontPtr makeGdiplusFont(const std::string& name, CCoord size, std::int32_t style) {
    return makeOwned<GdiplusFont>(name, size, style);
}

GdiplusContext::GdiplusContext(const CRect& rect)
    : area(rect),
      picture(std::make_unique<Gdiplus::Bitmap>(static_cast<INT>(rect.getWidth()),
                                                static_cast<INT>(rect.getHeight()), kPixels)),
      graphics(std::make_unique<Gdiplus::Graphics>(picture.get())) {
    // Opaque from the start: what is drawn then needs no opacity of its own.
    graphics->Clear(Gdiplus::Color(255, 0, 0, 0));
    useGreyEdges(*graphics);
    // Pictures go pixel on pixel.
    graphics->SetInterpolationMode(Gdiplus::InterpolationModeNearestNeighbor);
    graphics->SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
    graphics->TranslateTransform(real(-rect.left), real(-rect.top));
}

GdiplusContext::~GdiplusContext() = default;

void GdiplusContext::drawBitmap(const IPlatformBitmap& source, const CRect& rect,
                                const CPoint& offset) {
    Gdiplus::Bitmap& image = static_cast<const GdiplusBitmap&>(source).bitmapAt(getScaleFactor());
    const CPoint size(image.GetWidth(), image.GetHeight());
    const CRect within = inWindow(rect);
    const CPoint from = inWindow(offset);
    // Where the picture's own corner comes to.
    const CPoint origin = within.getTopLeft() - CPoint(std::round(from.x), std::round(from.y));
    const CRect target = CRect(origin, size).bound(within);
    if (!target.isEmpty()) {
        graphics->DrawImage(&image, realRect(target), real(target.left - origin.x),
                            real(target.top - origin.y), real(target.getWidth()),
                            real(target.getHeight()), Gdiplus::UnitPixel);
    }
}

void GdiplusContext::fillRect(const CRect& rect, const CColor& color) {
    const Gdiplus::SolidBrush brush(colorOf(color));
    graphics->FillRectangle(&brush, realRect(inWindow(rect)));
}

void GdiplusContext::frameRect(const CRect& rect, const CColor& color) {
    const double width = lineWidth();
    const Gdiplus::Pen pen(colorOf(color), real(width));
    // The line's middle runs half its width inside the edge.
    graphics->DrawRectangle(&pen, realRect(inWindow(rect).inset(width / 2, width / 2)));
}

void GdiplusContext::drawString(const IPlatformFont& font, const std::string& text,
                                const CPoint& baseline, const CRect& clip, const CColor& color) {
    graphics->SetClip(realRect(inWindow(clip)));
    // Letters are fitted to the pixels' edges, pictures to their middles.
    graphics->SetPixelOffsetMode(Gdiplus::PixelOffsetModeNone);
    static_cast<const GdiplusFont&>(font).draw(*graphics, text, inWindow(baseline), color);
    graphics->SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
    graphics->ResetClip();
}

void GdiplusContext::copyTo(HDC window) const {
    graphics->Flush(Gdiplus::FlushIntentionSync);
    const LockedPixels pixels(*picture, Gdiplus::ImageLockModeRead);
    if (!pixels) {
        return;
    }
    const auto width = static_cast<LONG>(area.getWidth());
    const auto height = static_cast<LONG>(area.getHeight());
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height; // the top row comes first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    SetDIBitsToDevice(window, static_cast<int>(area.left), static_cast<int>(area.top),
                      static_cast<DWORD>(width), static_cast<DWORD>(height), 0, 0, 0,
                      static_cast<UINT>(height), pixels.row(0), &info, DIB_RGB_COLORS);
}

} // namespace VSTGUI
