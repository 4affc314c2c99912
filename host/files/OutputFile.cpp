#include "host/files/OutputFile.h"

#include "host/Error.h"
#include "host/files/SystemFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

namespace zelvatone {

namespace {

// A link is written through, not replaced.
std::filesystem::path followLinks(const std::filesystem::path& path) {
    std::error_code error;
    const auto followed = std::filesystem::canonical(path, error);
    return error ? path : followed;
}

} // namespace

OutputFile::OutputFile(const std::filesystem::path& path)
    : path_(path), target_(followLinks(path)) {
    std::error_code error; // what cannot be looked at shows when it is opened
    const auto status = std::filesystem::status(target_, error);
    if (std::filesystem::is_directory(status)) {
        throw InputError("cannot write " + path_.string() + ": it is a directory");
    }
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        throw InputError("cannot write " + path_.string() + ": it is not a regular file");
    }
    // Renaming over a file asks for no permission to write to it, so that is asked for here.
    if (std::filesystem::exists(status) && !mayWrite(target_)) {
        fail(errno);
    }
    openHidden();
}

OutputFile::~OutputFile() {
    discard();
}

void OutputFile::openHidden() {
    constexpr int attempts = 100; // leftovers of killed processes that had the same number
    const std::string stem = ".zelvatone-" + std::to_string(getpid()) + "-";
    for (int i = 0; descriptor_ < 0 && i < attempts; ++i) {
        hidden_ = target_.parent_path() / (stem + std::to_string(i));
        descriptor_ = createFile(hidden_);
        if (descriptor_ < 0 && errno != EEXIST) {
            break;
        }
    }
    if (descriptor_ < 0) {
        fail(errno);
    }
}

void OutputFile::discard() noexcept {
    if (descriptor_ >= 0) {
        close(descriptor_);
        removeHidden();
        descriptor_ = -1;
    }
}

void OutputFile::removeHidden() const noexcept {
    std::error_code error; // nothing to do about it
    std::filesystem::remove(hidden_, error);
}

void OutputFile::fail(int error) const {
    throw InputError("cannot write " + path_.string() + ": " +
                     std::generic_category().message(error));
}

std::int64_t OutputFile::read(void* target, std::int64_t count) const {
    std::int64_t done = 0;
    while (done < count) {
        const std::int64_t got =
            readFile(descriptor_, static_cast<char*>(target) + done, count - done);
        if (got == 0 || (got < 0 && errno != EINTR)) {
            break;
        }
        done += got > 0 ? got : 0;
    }
    return done;
}

std::int64_t OutputFile::write(const void* source, std::int64_t count) {
    std::int64_t done = 0;
    while (writeError_ == 0 && done < count) {
        const std::int64_t put =
            writeFile(descriptor_, static_cast<const char*>(source) + done, count - done);
        if (put < 0 && errno != EINTR) {
            writeError_ = errno;
        }
        done += put > 0 ? put : 0;
    }
    return done;
}

std::int64_t OutputFile::seek(std::int64_t offset, int whence) const {
    return seekFile(descriptor_, offset, whence);
}

std::int64_t OutputFile::size() const {
    const std::int64_t here = seek(0, SEEK_CUR);
    const std::int64_t end = seek(0, SEEK_END);
    seek(here, SEEK_SET);
    return end;
}

void OutputFile::check() const {
    if (writeError_ != 0) {
        fail(writeError_);
    }
}

void OutputFile::settle() {
    check();
    if (settleFile(descriptor_) != 0) {
        fail(errno);
    }
}

void OutputFile::commit() {
    settle();
    const int closed = close(descriptor_);
    descriptor_ = -1;
    if (closed != 0 || renameFile(hidden_, target_) != 0) {
        const int error = errno;
        removeHidden();
        fail(error);
    }
}

} // namespace zelvatone
