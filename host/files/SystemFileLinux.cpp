#include "host/files/SystemFile.h"

#include <sys/stat.h>
#include <unistd.h>

namespace zelvatone {

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

bool mayBePlanted(const std::filesystem::path& link) {
    struct stat status {};
    struct stat folder {};
    const auto parent = link.has_parent_path() ? link.parent_path() : std::filesystem::path(".");
    if (lstat(link.c_str(), &status) != 0 || stat(parent.c_str(), &folder) != 0) {
        return false; // what is not there is no danger
    }
    return (folder.st_mode & S_IWOTH) != 0 && status.st_uid != geteuid() &&
           status.st_uid != folder.st_uid;
}

} // namespace zelvatone
