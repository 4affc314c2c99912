// PNG files through GDI+.
#include "host/Error.h"
#include "host/files/OutputFile.h"
#include "host/picture/TrueColourPicture.h"
#include "host/text/Format.h"

#include <windows.h>

#include <objidl.h>

#include <gdiplus.h>

#include <algorithm>
#include <memory>

namespace zelvatone {

namespace {

// GDI+'s name for its maker of PNG files.
constexpr CLSID kPngEncoder{
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

// GDI+ works while this exists.
class Session {
public:
    Session() {
        const Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&token_, &input, nullptr);
    }
    ~Session() { Gdiplus::GdiplusShutdown(token_); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

private:
    ULONG_PTR token_ = 0;
};

struct StreamDeleter {
    void operator()(IStream* stream) const { stream->Release(); }
};
using Stream = std::unique_ptr<IStream, StreamDeleter>;

Stream makeStream() {
    IStream* stream = nullptr;
    constexpr BOOL kFreesItsMemory = TRUE;
    CreateStreamOnHGlobal(nullptr, kFreesItsMemory, &stream);
    return Stream(stream);
}

// Blue comes first in Windows' pictures, and rows begin at multiples of four bytes.
struct WindowsPixels {
    explicit WindowsPixels(const TrueColourPicture& picture)
        : stride((picture.width * 3 + 3) / 4 * 4),
          bytes(static_cast<std::size_t>(stride) * static_cast<std::size_t>(picture.height)) {
        const std::uint8_t* from = picture.pixels.data();
        for (int y = 0; y < picture.height; ++y) {
            std::uint8_t* to = bytes.data() + static_cast<std::size_t>(y) * stride;
            for (int x = 0; x < picture.width; ++x, from += 3, to += 3) {
                std::reverse_copy(from, from + 3, to);
            }
        }
    }

    int stride;
    std::vector<std::uint8_t> bytes;
};

// Empty when GDI+ does not do it.
std::vector<char> encode(const TrueColourPicture& picture) {
    WindowsPixels pixels(picture);
    Gdiplus::Bitmap bitmap(picture.width, picture.height, pixels.stride, PixelFormat24bppRGB,
                           pixels.bytes.data());
    const Stream stream = makeStream();
    if (!stream || bitmap.Save(stream.get(), &kPngEncoder, nullptr) != Gdiplus::Ok) {
        return {};
    }
    STATSTG state{};
    stream->Stat(&state, STATFLAG_NONAME);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    std::vector<char> bytes(state.cbSize.QuadPart);
    ULONG count = 0;
    stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &count);
    bytes.resize(count);
    return bytes;
}

} // namespace

void writePng(const std::filesystem::path& path, const TrueColourPicture& picture) {
    const Session session;
    const auto bytes = encode(picture);
    if (bytes.empty()) {
        throw InputError(
            formatText("cannot write {}: Windows cannot encode the picture", path.string()));
    }
    OutputFile file(path);
    file.write(bytes.data(), static_cast<std::int64_t>(bytes.size()));
    file.commit();
}

} // namespace zelvatone
