#include "host/files/FileBytes.h"

#include "host/Error.h"

#include <algorithm>
#include <fstream>
#include <system_error>

namespace zelvatone {

std::vector<std::uint8_t> readBytes(const std::filesystem::path& path, std::size_t largest,
                                    const std::string& kind) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) {
        throw InputError("no such file");
    }
    if (std::filesystem::is_directory(status)) {
        throw InputError("is a directory, not a " + kind);
    }
    std::ifstream stream(path, std::ios::binary);
    std::vector<std::uint8_t> bytes(
        std::min<std::uintmax_t>(largest + 1, std::filesystem::is_regular_file(status)
                                                  ? std::filesystem::file_size(path, error) + 1
                                                  : largest + 1));
    stream.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!stream.is_open() || stream.bad()) {
        throw InputError("cannot be read");
    }
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    if (bytes.size() > largest) {
        throw InputError("too large for a " + kind);
    }
    return bytes;
}

} // namespace zelvatone
