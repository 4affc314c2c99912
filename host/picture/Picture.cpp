#include "host/picture/Picture.h"

#include "host/picture/PngFile.h"

namespace zelvatone {

void writePng(const std::filesystem::path& path, const Picture& picture) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGBA_COLORMAP;
    image.colormap_entries = static_cast<png_uint_32>(picture.colours.size());
    writePngFile(path, image, picture.pixels.data(), picture.colours.data());
}

} // namespace zelvatone
