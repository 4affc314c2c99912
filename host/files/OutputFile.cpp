#include "host/files/OutputFile.h"

#include "host/Error.h"
#include "host/files/SystemFile.h"
#include "host/text/Format.h"

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

namespace zelvatone {

namespace {

// A link is written through, not replaced.
std::filesystem::path followLinks(const std::filesystem::path& path) {
    constexpr int kMostLinks = 40; // as many as the system itself follows
    std::filesystem::path followed = path;
    std::error_code error; // what cannot be looked at shows when it is opened
    for (int i = 0; i < kMostLinks && std::filesystem::is_symlink(followed, error); ++i) {
        if (mayBePlanted(followed)) {
            throw InputError(
                formatText("cannot write {}: {} is another user's link in a folder that "
                           "all users can write to",
                           path.string(), followed.string()));
        }
        followed = followed.parent_path() / std::filesystem::read_symlink(followed, error);
    }
    return followed;
}

} // namespace

OutputFile::OutputFile(const std::filesystem::path& path)
    : path_(path), target_(followLinks(path)) {
    std::error_code error; // what cannot be looked at shows when it is opened
    const auto status = std::filesystem::status(target_, error);
    if (std::filesystem::is_directory(status)) {
        throw InputError(formatText("cannot write {}: it is a directory", path_.string()));
    }
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        throw InputError(formatText("cannot write {}: it is not a regular file", path_.string()));
    }
    // Replacing a file needs no permission to write to it, so that is asked for here.
    if (std::filesystem::exists(status) && !mayWrite(target_)) {
        fail(errno);
    }
    staged_.emplace(target_);
    if (staged_->descriptor() < 0) {
        fail(errno);
    }
}

void OutputFile::fail(int error) const {
    throw InputError(
        formatText("cannot write {}: {}", path_.string(), std::generic_category().message(error)));
}

std::int64_t OutputFile::read(void* target, std::int64_t count) {
    std::int64_t done = 0;
    while (done < count) {
        const std::int64_t got =
            readFile(staged_->descriptor(), static_cast<char*>(target) + done, count - done);
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
            writeFile(staged_->descriptor(), static_cast<const char*>(source) + done, count - done);
        if (put < 0 && errno != EINTR) {
            writeError_ = errno;
        }
        done += put > 0 ? put : 0;
    }
    return done;
}

std::int64_t OutputFile::seek(std::int64_t offset, int whence) {
    return seekFile(staged_->descriptor(), offset, whence);
}

std::int64_t OutputFile::size() {
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
    if (settleFile(staged_->descriptor()) != 0) {
        fail(errno);
    }
}

void OutputFile::commit() {
    settle();
    const int published = staged_->publish();
    const int error = errno;
    staged_.reset();
    if (published != 0) {
        fail(error);
    }
}

} // namespace zelvatone
