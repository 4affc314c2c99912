#include "tests/plugin/CallWatch.h"

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>
#include <pthread.h>
#include <unistd.h>

namespace {

CallCounts counts;

// The bytes that were asked for, by address: what the allocator adds differs from run to run. No
// container, whose own memory would come through here; a table that is half empty, in which a
// search goes on from an address's own place to the next free one.
class Sizes {
public:
    void insert(void* memory, std::size_t size) {
        std::size_t place = placeOf(memory);
        while (entries_[place].memory != nullptr) {
            place = next(place);
        }
        if (++used_ > kPlaces / 2) {
            std::abort();
        }
        entries_[place] = {memory, size};
    }
    // Returns the size; 0 for what was allocated before this file's functions were there.
    std::size_t take(void* memory) {
        std::size_t place = placeOf(memory);
        while (entries_[place].memory != memory) {
            if (entries_[place].memory == nullptr) {
                return 0;
            }
            place = next(place);
        }
        const std::size_t size = entries_[place].size;
        --used_;
        closeGap(place);
        return size;
    }

private:
    struct Entry {
        void* memory;
        std::size_t size;
    };
    static constexpr std::size_t kPlaces = 1U << 17;

    static std::size_t next(std::size_t place) { return (place + 1) % kPlaces; }
    static std::size_t placeOf(void* memory) {
        return reinterpret_cast<std::uintptr_t>(memory) / alignof(std::max_align_t) % kPlaces;
    }
    // Puts the entries after `gap` again, so that searches find them without it.
    void closeGap(std::size_t gap) {
        entries_[gap] = {};
        for (std::size_t place = next(gap); entries_[place].memory != nullptr;
             place = next(place)) {
            const Entry entry = entries_[place];
            entries_[place] = {};
            --used_;
            insert(entry.memory, entry.size);
        }
    }

    std::array<Entry, kPlaces> entries_;
    std::size_t used_;
};

Sizes sizes; // all zeros before the first call, whichever that is

void* allocated(void* memory, std::size_t size) {
    if (memory != nullptr) {
        ++counts.allocations;
        counts.memory += static_cast<std::ptrdiff_t>(size);
        sizes.insert(memory, size);
    }
    return memory;
}

void released(void* memory) {
    if (memory != nullptr) {
        ++counts.releases;
        counts.memory -= static_cast<std::ptrdiff_t>(sizes.take(memory));
    }
}

// The function of this name that this file's stands before.
template<class Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

CallCounts callCounts() {
    return counts;
}

// A program's own functions stand before those of the C library, for all that is loaded later too.
#define WATCHED extern "C" __attribute__((visibility("default")))

// NOLINTBEGIN(bugprone-reserved-identifier): their names there
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
}

WATCHED void* malloc(std::size_t size) noexcept {
    return allocated(__libc_malloc(size), size);
}
WATCHED void* calloc(std::size_t count, std::size_t size) noexcept {
    return allocated(__libc_calloc(count, size), count * size);
}
WATCHED void* realloc(void* memory, std::size_t size) noexcept {
    released(memory); // a test that runs out of memory is over anyway
    return allocated(__libc_realloc(memory, size), size);
}
WATCHED void* memalign(std::size_t alignment, std::size_t size) noexcept {
    return allocated(__libc_memalign(alignment, size), size);
}
WATCHED void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return allocated(__libc_memalign(alignment, size), size);
}
WATCHED int posix_memalign(void** memory, std::size_t alignment, std::size_t size) noexcept {
    *memory = allocated(__libc_memalign(alignment, size), size);
    return *memory == nullptr ? ENOMEM : 0;
}
WATCHED void free(void* memory) noexcept {
    released(memory);
    __libc_free(memory);
}

// Defines the function of this name that counts a lock and goes on to the real one.
#define WATCHED_LOCK(name, Lock)                                                                   \
    WATCHED int name(Lock* lock) noexcept {                                                        \
        static auto* const real = next<int(Lock*)>(#name);                                         \
        ++counts.locks;                                                                            \
        return real(lock);                                                                         \
    }
WATCHED_LOCK(pthread_mutex_lock, pthread_mutex_t)
WATCHED_LOCK(pthread_mutex_trylock, pthread_mutex_t)
WATCHED_LOCK(pthread_rwlock_rdlock, pthread_rwlock_t)
WATCHED_LOCK(pthread_rwlock_wrlock, pthread_rwlock_t)
#undef WATCHED_LOCK

WATCHED ssize_t write(int file, const void* bytes, std::size_t size) {
    static auto* const real = next<ssize_t(int, const void*, std::size_t)>("write");
    ++counts.outputs;
    return real(file, bytes, size);
}
WATCHED int puts(const char* text) {
    ++counts.outputs;
    return std::fputs(text, stdout) < 0 || std::fputc('\n', stdout) < 0 ? EOF : 0;
}
WATCHED int printf(const char* format, ...) {
    ++counts.outputs;
    va_list values;
    va_start(values, format);
    const int length = std::vfprintf(stdout, format, values);
    va_end(values);
    return length;
}
// What a compiler calls that checks formats.
WATCHED int __printf_chk(int /*flag*/, const char* format, ...) {
    ++counts.outputs;
    va_list values;
    va_start(values, format);
    const int length = std::vfprintf(stdout, format, values);
    va_end(values);
    return length;
}
// NOLINTEND(bugprone-reserved-identifier)
