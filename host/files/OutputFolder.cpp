#include "host/files/OutputFolder.h"

#include "host/Error.h"
#include "host/files/Leftovers.h"
#include "host/text/Format.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>
#include <utility>

namespace zelvatone {

namespace {

namespace fs = std::filesystem;

// Without a slash at its end, which would name the inside of the folder.
fs::path targetOf(const fs::path& path) {
    std::error_code error;
    const fs::path whole = fs::weakly_canonical(fs::absolute(path), error);
    const fs::path target = error ? fs::absolute(path) : whole;
    return target.has_filename() ? target : target.parent_path();
}

} // namespace

OutputFolder::OutputFolder(const fs::path& path, const std::function<bool(const fs::path&)>& isOurs)
    : path_(path), target_(targetOf(path)) {
    std::error_code error; // what cannot be looked at shows when the hidden folder is made
    if (fs::exists(target_, error) && !fs::is_directory(target_, error)) {
        fail("it is no folder");
    }
    if (fs::is_directory(target_, error) && !fs::is_empty(target_, error) && !isOurs(target_)) {
        fail("there are other files in it; name a new folder");
    }
    sweepLeftovers(target_.parent_path());
    makeHidden();
}

OutputFolder::~OutputFolder() {
    std::error_code error; // nothing to do about it
    if (!hidden_.empty()) {
        fs::remove_all(hidden_, error);
    }
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

// Another process may sweep the folder away before it is claimed.
void OutputFolder::makeHidden() {
    constexpr int kAttempts = 100; // leftovers that cannot be removed
    std::error_code error;
    for (int i = 0; i < kAttempts; ++i) {
        const fs::path hidden = hiddenName(target_.parent_path(), i);
        const bool isNew = fs::create_directory(hidden, error);
        if (error) {
            fail(error.message());
        }
        if (isNew) {
            descriptor_ = open(hidden.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
            if (descriptor_ >= 0 && claim(descriptor_)) {
                hidden_ = hidden;
                return;
            }
            close(std::exchange(descriptor_, -1));
        }
    }
    fail("folders that killed programs left behind cannot be removed");
}

void OutputFolder::fail(const std::string& reason) const {
    throw InputError(formatText("cannot write {}: {}", path_.string(), reason));
}

void OutputFolder::commit() {
    std::error_code error;
    fs::rename(hidden_, target_, error); // goes well for nothing and for an empty folder
    if (!error) {
        hidden_.clear();
        return;
    }
    // Both change places at once; the destructor then removes the old one.
    if (renameat2(AT_FDCWD, hidden_.c_str(), AT_FDCWD, target_.c_str(), RENAME_EXCHANGE) != 0) {
        fail(std::generic_category().message(errno));
    }
}

} // namespace zelvatone
