// The system's own calls on files, under one name on every platform. What fails returns as in the
// C library, with the reason in errno.
#pragma once

#include <cstdint>
#include <filesystem>

namespace zelvatone {

// As read(2), write(2), lseek(2) and fsync(2).
std::int64_t readFile(int descriptor, void* target, std::int64_t count);
std::int64_t writeFile(int descriptor, const void* source, std::int64_t count);
std::int64_t seekFile(int descriptor, std::int64_t offset, int whence);
int settleFile(int descriptor);

// Whether the file may be written to; with errno when not.
bool mayWrite(const std::filesystem::path& path);

// Whether another user may have put the link there to turn this user's writing to another file: it
// lies in a folder that all users can write to, and belongs neither to this user nor to the
// folder's.
bool mayBePlanted(const std::filesystem::path& link);

} // namespace zelvatone
