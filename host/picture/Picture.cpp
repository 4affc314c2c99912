#include "picture/Picture.h"

#include "Error.h"
#include "audio/OutputFile.h"

#include <png.h>

namespace zelvatone {

namespace {

[[noreturn]] void fail(const std::filesystem::path& path, png_image& image) {
    const std::string reason = image.message;
    png_image_free(&image);
    throw InputError("cannot write " + path.string() + ": " + reason);
}

} // namespace

void writePng(const std::filesystem::path& path, const Picture& picture) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGBA_COLORMAP;
    image.colormap_entries = static_cast<png_uint_32>(picture.colours.size());
    std::vector<std::uint8_t> bytes(PNG_IMAGE_PNG_SIZE_MAX(image));
    png_alloc_size_t size = bytes.size();
    if (png_image_write_to_memory(&image, bytes.data(), &size, 0, picture.pixels.data(), 0,
                                  picture.colours.data()) == 0) {
        fail(path, image);
    }
    OutputFile file(path);
    file.write(bytes.data(), static_cast<std::int64_t>(size));
    file.commit();
}

} // namespace zelvatone
