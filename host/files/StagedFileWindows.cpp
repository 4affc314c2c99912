#include "host/files/StagedFile.h"

#include "host/files/Leftovers.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

namespace zelvatone {

namespace {

// Names that cannot be removed by any sweep.
constexpr int kAttempts = 100;

int errorNumber(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION: // another program has it open
        return EACCES;
    case ERROR_DISK_FULL:
        return ENOSPC;
    default:
        return EIO;
    }
}

} // namespace

StagedFile::StagedFile(const std::filesystem::path& target) : target_(target) {
    sweepLeftovers(target.has_parent_path() ? target.parent_path() : std::filesystem::path("."));
    openHidden(_S_IREAD | _S_IWRITE);
}

StagedFile::~StagedFile() {
    if (descriptor_ >= 0) {
        _close(descriptor_);
    }
    removeHidden();
}

void StagedFile::openHidden(unsigned int mode) {
    for (int i = 0; i < kAttempts && descriptor_ < 0; ++i) {
        hidden_ = hiddenName(target_.parent_path(), i);
        descriptor_ =
            _wopen(hidden_.c_str(), _O_RDWR | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT, mode);
        if (descriptor_ < 0 && errno != EEXIST) {
            break;
        }
    }
    if (descriptor_ < 0) {
        hidden_.clear();
    }
}

void StagedFile::removeHidden() noexcept {
    if (!hidden_.empty()) {
        _wunlink(hidden_.c_str());
        hidden_.clear();
    }
}

// The library's own rename does not replace, and no open file can be renamed.
int StagedFile::publish() {
    if (_close(std::exchange(descriptor_, -1)) != 0) {
        return -1;
    }
    if (MoveFileExW(hidden_.c_str(), target_.c_str(), MOVEFILE_REPLACE_EXISTING) == FALSE) {
        errno = errorNumber(GetLastError());
        return -1;
    }
    hidden_.clear();
    return 0;
}

} // namespace zelvatone
