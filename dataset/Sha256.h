// The checksum of files, by the library nettle: it takes the processor's own instructions for it,
// which are five times as fast as code of our own could be.
#pragma once

#include <nettle/sha2.h>

#include <filesystem>
#include <span>
#include <string>

namespace zelvatone {

class Sha256 {
public:
    Sha256();
    void add(std::span<const char> bytes);
    // The checksum of all bytes so far, as 64 hexadecimal digits; starts again from none.
    std::string take();

private:
    sha256_ctx context_;
};

// Of a whole file. Throws InputError, with its name, when it cannot be read; Interrupted.
std::string sha256Of(const std::filesystem::path& path);

} // namespace zelvatone
