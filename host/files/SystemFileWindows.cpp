#include "host/files/SystemFile.h"

#include <io.h>

#include <algorithm>

namespace zelvatone {

namespace {

// The library's calls count in 32 bits.
unsigned int atOnce(std::int64_t count) {
    constexpr std::int64_t kMost = 1 << 30;
    return static_cast<unsigned int>(std::min(count, kMost));
}

} // namespace

std::int64_t readFile(int descriptor, void* target, std::int64_t count) {
    return _read(descriptor, target, atOnce(count));
}

std::int64_t writeFile(int descriptor, const void* source, std::int64_t count) {
    return _write(descriptor, source, atOnce(count));
}

std::int64_t seekFile(int descriptor, std::int64_t offset, int whence) {
    return _lseeki64(descriptor, offset, whence);
}

int settleFile(int descriptor) {
    return _commit(descriptor);
}

bool mayWrite(const std::filesystem::path& path) {
    constexpr int kForWriting = 2;
    return _waccess(path.c_str(), kForWriting) == 0;
}

// Only administrators make links.
bool mayBePlanted(const std::filesystem::path& /*link*/) {
    return false;
}

} // namespace zelvatone
