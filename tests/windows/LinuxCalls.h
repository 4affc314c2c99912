// What the tests call on Linux, for Windows. Included ahead of them by the compiler's
// command line.
#pragma once

#include <windows.h>

#include <unistd.h>

#include <cstddef>

// The file's position stays where it is.
inline ssize_t pread(int file, void* target, std::size_t count, off_t offset) {
    const off_t before = lseek(file, 0, SEEK_CUR);
    lseek(file, offset, SEEK_SET);
    const int got = read(file, target, static_cast<unsigned int>(count));
    lseek(file, before, SEEK_SET);
    return got;
}

namespace testing {

// Windows has no signals between processes: one that aborts ends with this status.
struct KilledBySignal {
    explicit KilledBySignal(int /*signal*/) {}
    bool operator()(int status) const {
        constexpr int kAborted = 3;
        return status == kAborted;
    }
};

} // namespace testing
