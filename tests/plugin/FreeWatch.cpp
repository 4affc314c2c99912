#include "tests/plugin/FreeWatch.h"

#include <malloc.h>

#include <array>
#include <cstdint>

namespace {

// No container: its own memory would come through here.
std::array<std::uintptr_t, 100> watched;
std::size_t watchedCount = 0;
std::size_t freedCount = 0;

[[maybe_unused]] void note(void* memory) { // by the sanitizers' builds
    const auto start = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t end = start + malloc_usable_size(memory);
    for (std::size_t i = 0; i < watchedCount; ++i) {
        if (watched[i] >= start && watched[i] < end) {
            watched[i] = 0; // whatever is there next is not watched
            ++freedCount;
        }
    }
}

} // namespace

void watchForFree(const void* address) {
    watched.at(watchedCount++) = reinterpret_cast<std::uintptr_t>(address);
}

std::size_t freedOfWatched() {
    return freedCount;
}

#if !ZELVATONE_SANITIZED

// The program's own `free` stands before that of the C library, for all that is loaded later too.
extern "C" void __libc_free(void* memory); // NOLINT(bugprone-reserved-identifier): its name there
extern "C" __attribute__((visibility("default"))) void free(void* memory) noexcept {
    if (memory != nullptr) {
        note(memory);
    }
    __libc_free(memory);
}

#endif
