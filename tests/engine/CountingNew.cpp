#include "tests/engine/CountingNew.h"

#include <cstdlib>
#include <new>

namespace {

zelvatone::test::AllocationCounts counts; // the tests have one thread

void* counted(void* memory, std::size_t size) {
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++counts.allocations;
    counts.lastSize = size;
    return memory;
}

void* allocate(std::size_t size) {
    return counted(std::malloc(size == 0 ? 1 : size), size);
}

void* allocate(std::size_t size, std::align_val_t alignment) {
    const auto step = static_cast<std::size_t>(alignment);
    // aligned_alloc wants whole multiples of the alignment.
    return counted(std::aligned_alloc(step, (size / step + 1) * step), size);
}

void release(void* memory) {
    if (memory != nullptr) {
        ++counts.releases;
        std::free(memory);
    }
}

} // namespace

namespace zelvatone::test {

AllocationCounts allocationCounts() {
    return counts;
}

} // namespace zelvatone::test

// The forms without exceptions end up here as well: the library builds them upon these.
void* operator new(std::size_t size) {
    return allocate(size);
}
void* operator new[](std::size_t size) {
    return allocate(size);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocate(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return allocate(size, alignment);
}
void operator delete(void* memory) noexcept {
    release(memory);
}
void operator delete[](void* memory) noexcept {
    release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    release(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::align_val_t) noexcept {
    release(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept {
    release(memory);
}
