// A file that appears under its name only when it is complete.
#pragma once

#include <cstdint>
#include <filesystem>

namespace zelvatone {

// Bytes go to a hidden file in the target's folder; commit() gives it the name. Without a commit
// nothing is left and an earlier file of that name is untouched.
class OutputFile {
public:
    // Throws InputError when `path` is a directory or cannot be written to.
    explicit OutputFile(const std::filesystem::path& path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // As read(2), write(2) and lseek(2), but whole: fewer bytes come back at an error or at the
    // end only. The first failed write is remembered.
    std::int64_t read(void* target, std::int64_t count) const;
    std::int64_t write(const void* source, std::int64_t count);
    std::int64_t seek(std::int64_t offset, int whence) const;
    std::int64_t size() const;

    // Throws InputError when a write has failed so far.
    void check() const;
    // Brings the bytes to the disk, so that commit() has little left that can fail. Throws
    // InputError when that fails or a write has failed.
    void settle();
    // Settles and gives the file its name. Throws InputError when any of it fails.
    void commit();

    const std::filesystem::path& path() const { return path_; }

private:
    void openHidden();
    void discard() noexcept;
    void removeHidden() const noexcept;
    [[noreturn]] void fail(int error) const;

    std::filesystem::path path_;   // as the user wrote it
    std::filesystem::path target_; // with links followed
    std::filesystem::path hidden_;
    int descriptor_ = -1;
    int writeError_ = 0; // errno of the first failed write
};

} // namespace zelvatone
