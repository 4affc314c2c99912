#include "host/picture/TrueColourPicture.h"

#include "host/picture/PngFile.h"

namespace zelvatone {

void writePng(const std::filesystem::path& path, const TrueColourPicture& picture) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    writePngFile(path, image, picture.pixels.data(), nullptr);
}

} // namespace zelvatone
