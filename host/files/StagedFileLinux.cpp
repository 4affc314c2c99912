#include "host/files/StagedFile.h"

#include "host/files/Leftovers.h"
#include "host/text/Format.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>

namespace zelvatone {

namespace {

namespace fs = std::filesystem;

// Other processes that chose the same hidden name: leftovers that cannot be removed.
constexpr int kAttempts = 100;
// Readable and writable for whom the user's own settings say so, as any new file.
constexpr mode_t kNewFile = 0666;
constexpr mode_t kPermissions = 0777;

fs::path folderOf(const fs::path& target) {
    return target.has_parent_path() ? target.parent_path() : fs::path(".");
}

// The link through which a file without a name gets one.
std::string linkTo(int descriptor) {
    return formatText("/proc/self/fd/{}", descriptor);
}

// A file without a name, or -1 where the file system has none or could not name it later.
int openNameless(const fs::path& folder, mode_t mode) {
    if (access("/proc/self/fd", X_OK) != 0) {
        return -1;
    }
    return open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, mode);
}

// Users who could read or write the old file can do so with the new one, and no others. Where the
// group is not this user's to give, the new file's group gets what all others have.
void takeOver(int descriptor, const struct stat& old) {
    mode_t mode = old.st_mode & kPermissions;
    if (fchown(descriptor, old.st_uid, old.st_gid) != 0 &&
        fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) != 0) {
        const mode_t ofOthers = mode & S_IRWXO;
        mode = (mode & ~static_cast<mode_t>(S_IRWXG)) | (mode & ofOthers << 3U);
    }
    fchmod(descriptor, mode);
}

bool hasName(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 && status.st_nlink > 0;
}

// Another name for an open file; fails when the name is taken.
int nameFile(int descriptor, const fs::path& name) {
    return linkat(AT_FDCWD, linkTo(descriptor).c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW);
}

} // namespace

StagedFile::StagedFile(const fs::path& target) : target_(target) {
    sweepLeftovers(folderOf(target));
    struct stat old {};
    const bool replaces = stat(target.c_str(), &old) == 0;
    // Never open to more users than the old file.
    const mode_t mode = replaces ? old.st_mode & kNewFile : kNewFile;
    descriptor_ = openNameless(folderOf(target), mode);
    if (descriptor_ < 0) {
        openHidden(mode);
    }
    if (descriptor_ >= 0 && replaces) {
        takeOver(descriptor_, old);
    }
}

StagedFile::~StagedFile() {
    if (descriptor_ >= 0) {
        close(descriptor_);
        removeHidden();
    }
}

void StagedFile::removeHidden() noexcept {
    if (!hidden_.empty()) {
        unlink(hidden_.c_str());
        hidden_.clear();
    }
}

// Another process may sweep the file away before it is claimed.
void StagedFile::openHidden(unsigned int mode) {
    for (int i = 0; i < kAttempts && descriptor_ < 0; ++i) {
        hidden_ = hiddenName(folderOf(target_), i);
        descriptor_ = open(hidden_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (descriptor_ < 0 && errno != EEXIST) {
            break;
        }
        if (descriptor_ >= 0 && !(claim(descriptor_) && hasName(descriptor_))) {
            close(descriptor_);
            descriptor_ = -1;
        }
    }
    if (descriptor_ < 0) {
        hidden_.clear();
    }
}

// A link never takes the place of a file, so the file takes a hidden name first.
int StagedFile::nameHidden() {
    claim(descriptor_);
    for (int i = 0; i < kAttempts; ++i) {
        const fs::path name = hiddenName(folderOf(target_), i);
        if (nameFile(descriptor_, name) == 0) {
            hidden_ = name;
            return 0;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    return -1;
}

int StagedFile::publish() {
    if (hidden_.empty()) {
        if (nameFile(descriptor_, target_) == 0) {
            return 0;
        }
        if (errno != EEXIST || nameHidden() != 0) {
            return -1;
        }
    }
    if (std::rename(hidden_.c_str(), target_.c_str()) != 0) {
        return -1;
    }
    hidden_.clear();
    return 0;
}

} // namespace zelvatone
