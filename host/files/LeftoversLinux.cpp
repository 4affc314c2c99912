#include "host/files/Leftovers.h"
#include "host/text/Format.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <string_view>
#include <system_error>

namespace zelvatone {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPrefix = ".zelvatone-";

bool isNameOf(const fs::path& path, const struct stat& status) {
    struct stat named {};
    return lstat(path.c_str(), &named) == 0 && named.st_dev == status.st_dev &&
           named.st_ino == status.st_ino;
}

// Another process may have swept it away, and the name may be that of a new file already.
void removeUnused(const fs::path& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return;
    }
    struct stat status {};
    std::error_code error; // what cannot be removed stays
    if (fstat(descriptor, &status) == 0 && status.st_uid == geteuid() && claim(descriptor) &&
        isNameOf(path, status)) {
        fs::remove_all(path, error);
    }
    close(descriptor);
}

void sweep(const fs::path& folder) {
    std::error_code error; // a folder that cannot be read is not swept
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().filename().string().starts_with(kPrefix)) {
            removeUnused(entry->path());
        }
    }
}

} // namespace

fs::path hiddenName(const fs::path& folder, int number) {
    return folder / formatText("{}{}-{}", kPrefix, getpid(), number);
}

bool claim(int descriptor) {
    return flock(descriptor, LOCK_EX | LOCK_NB) == 0;
}

void sweepLeftovers(const fs::path& folder) noexcept {
    try {
        sweep(folder);
    } catch (const std::bad_alloc&) {
        return; // the next run sweeps
    }
}

} // namespace zelvatone
