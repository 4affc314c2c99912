// Files that this process has open.
#pragma once

#include <cstddef>
#include <filesystem>
#include <iterator>

namespace zelvatone::test {

inline std::ptrdiff_t countOpenFiles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

} // namespace zelvatone::test
