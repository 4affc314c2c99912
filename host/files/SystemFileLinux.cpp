#include "host/files/SystemFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

namespace zelvatone {

int createFile(const std::filesystem::path& path) {
    // Readable and writable for whom the user's own settings say so, as any new file.
    return open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}

std::int64_t readFile(int descriptor, void* target, std::int64_t count) {
    return read(descriptor, target, static_cast<std::size_t>(count));
}

std::int64_t writeFile(int descriptor, const void* source, std::int64_t count) {
    return write(descriptor, source, static_cast<std::size_t>(count));
}

std::int64_t seekFile(int descriptor, std::int64_t offset, int whence) {
    return lseek(descriptor, offset, whence);
}

int settleFile(int descriptor) {
    return fsync(descriptor);
}

bool mayWrite(const std::filesystem::path& path) {
    return access(path.c_str(), W_OK) == 0;
}

int renameFile(const std::filesystem::path& from, const std::filesystem::path& to) {
    return std::rename(from.c_str(), to.c_str());
}

} // namespace zelvatone
