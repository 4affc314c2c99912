#include "host/files/SystemFile.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

namespace zelvatone {

namespace {

// The library's calls count in 32 bits.
unsigned int atOnce(std::int64_t count) {
    constexpr std::int64_t kMost = 1 << 30;
    return static_cast<unsigned int>(std::min(count, kMost));
}

int errorNumber(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION: // somebody else has it open
        return EACCES;
    case ERROR_DISK_FULL:
        return ENOSPC;
    default:
        return EIO;
    }
}

} // namespace

int createFile(const std::filesystem::path& path) {
    return _wopen(path.c_str(), _O_RDWR | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT,
                  _S_IREAD | _S_IWRITE);
}

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

// The library's own rename does not replace.
int renameFile(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING) == FALSE) {
        errno = errorNumber(GetLastError());
        return -1;
    }
    return 0;
}

} // namespace zelvatone
