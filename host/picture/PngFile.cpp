#include "host/picture/PngFile.h"

#include "host/Error.h"
#include "host/files/OutputFile.h"
#include "host/text/Format.h"

#include <vector>

namespace zelvatone {

namespace {

[[noreturn]] void fail(const std::filesystem::path& path, png_image& image) {
    const std::string reason = image.message;
    png_image_free(&image);
    throw InputError(formatText("cannot write {}: {}", path.string(), reason));
}

} // namespace

void writePngFile(const std::filesystem::path& path, png_image& image, const void* pixels,
                  const void* colours) {
    std::vector<std::uint8_t> bytes(PNG_IMAGE_PNG_SIZE_MAX(image));
    png_alloc_size_t size = bytes.size();
    if (png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels, 0, colours) == 0) {
        fail(path, image);
    }
    OutputFile file(path);
    file.write(bytes.data(), static_cast<std::int64_t>(size));
    file.commit();
}

} // namespace zelvatone
