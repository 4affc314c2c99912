#include "tests/plugin/CallWatch.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>

#include <dlfcn.h>
#include <malloc.h>
#include <pthread.h>
#include <unistd.h>

namespace {

CallCounts counts;

void* allocated(void* memory) {
    if (memory != nullptr) {
        ++counts.allocations;
        counts.memory += static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
    }
    return memory;
}

void released(void* memory) {
    if (memory != nullptr) {
        ++counts.releases;
        counts.memory -= static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
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
    return allocated(__libc_malloc(size));
}
WATCHED void* calloc(std::size_t count, std::size_t size) noexcept {
    return allocated(__libc_calloc(count, size));
}
WATCHED void* realloc(void* memory, std::size_t size) noexcept {
    released(memory);
    void* moved = allocated(__libc_realloc(memory, size));
    return moved != nullptr || size == 0 ? moved : (allocated(memory), nullptr);
}
WATCHED void* memalign(std::size_t alignment, std::size_t size) noexcept {
    return allocated(__libc_memalign(alignment, size));
}
WATCHED void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return allocated(__libc_memalign(alignment, size));
}
WATCHED int posix_memalign(void** memory, std::size_t alignment, std::size_t size) noexcept {
    *memory = allocated(__libc_memalign(alignment, size));
    return *memory == nullptr ? ENOMEM : 0;
}
WATCHED void free(void* memory) noexcept {
    released(memory);
    __libc_free(memory);
}

WATCHED int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
    static auto* const real = next<int(pthread_mutex_t*)>("pthread_mutex_lock");
    ++counts.locks;
    return real(mutex);
}
WATCHED int pthread_mutex_trylock(pthread_mutex_t* mutex) noexcept {
    static auto* const real = next<int(pthread_mutex_t*)>("pthread_mutex_trylock");
    ++counts.locks;
    return real(mutex);
}
WATCHED int pthread_rwlock_rdlock(pthread_rwlock_t* lock) noexcept {
    static auto* const real = next<int(pthread_rwlock_t*)>("pthread_rwlock_rdlock");
    ++counts.locks;
    return real(lock);
}
WATCHED int pthread_rwlock_wrlock(pthread_rwlock_t* lock) noexcept {
    static auto* const real = next<int(pthread_rwlock_t*)>("pthread_rwlock_wrlock");
    ++counts.locks;
    return real(lock);
}

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
