// A file that appears under its name only when it is complete.
#pragma once

#include "host/files/ByteTarget.h"
#include "host/files/StagedFile.h"

#include <cstdint>
#include <filesystem>
#include <optional>

namespace zelvatone {

// Bytes go to a file beside the target; commit() gives it the name and, where it replaces a file,
// that one's mode. Without a commit nothing is left and an earlier file of that name is untouched.
// Links are followed, but not another user's in a folder that all can write to.
class OutputFile final : public ByteTarget {
public:
    // Throws InputError when `path` is a directory or cannot be written to.
    explicit OutputFile(const std::filesystem::path& path);

    std::int64_t read(void* target, std::int64_t count) override;
    std::int64_t write(const void* source, std::int64_t count) override;
    std::int64_t seek(std::int64_t offset, int whence) override;
    std::int64_t size() override;
    void check() const override;
    std::string name() const override { return path_.string(); }
    // Brings the bytes to the disk, so that commit() has little left that can fail. Throws
    // InputError when that fails or a write has failed.
    void settle();
    // Settles and gives the file its name. Throws InputError when any of it fails.
    void commit();

    const std::filesystem::path& path() const { return path_; }

private:
    [[noreturn]] void fail(int error) const;

    std::filesystem::path path_;       // as the user wrote it
    std::filesystem::path target_;     // with links followed
    std::optional<StagedFile> staged_; // until the commit
    int writeError_ = 0;               // errno of the first failed write
};

} // namespace zelvatone
