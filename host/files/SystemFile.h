// The system's own calls on files, under one name on every platform. What fails answers as the C
// library does, with the reason in errno.
#pragma once

#include <cstdint>
#include <filesystem>

namespace zelvatone {

// A new file, open for reading and writing, that no child process inherits: its descriptor, or -1
// with EEXIST when the name is taken.
int createFile(const std::filesystem::path& path);

// As read(2), write(2), lseek(2) and fsync(2).
std::int64_t readFile(int descriptor, void* target, std::int64_t count);
std::int64_t writeFile(int descriptor, const void* source, std::int64_t count);
std::int64_t seekFile(int descriptor, std::int64_t offset, int whence);
int settleFile(int descriptor);

// Whether the file may be written to; with errno when not.
bool mayWrite(const std::filesystem::path& path);
// Gives a file another name, in place of the file that has it: 0, or -1.
int renameFile(const std::filesystem::path& from, const std::filesystem::path& to);

} // namespace zelvatone
