#include "tests/host/AllocationCount.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

std::size_t taken = 0;
std::size_t most = 0;

// In front of each piece of memory stands its size, in a place that keeps the alignment.
constexpr std::size_t kHeader = alignof(std::max_align_t);

void* take(std::size_t size) {
    auto* memory = static_cast<std::size_t*>(std::malloc(kHeader + size));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    *memory = size;
    taken += size;
    most = std::max(most, taken);
    return reinterpret_cast<char*>(memory) + kHeader;
}

void give(void* memory) noexcept {
    if (memory != nullptr) {
        auto* start = reinterpret_cast<std::size_t*>(static_cast<char*>(memory) - kHeader);
        taken -= *start;
        std::free(start);
    }
}

} // namespace

void* operator new(std::size_t size) {
    return take(size);
}

void* operator new[](std::size_t size) {
    return take(size);
}

void operator delete(void* memory) noexcept {
    give(memory);
}

void operator delete[](void* memory) noexcept {
    give(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    give(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    give(memory);
}

namespace zelvatone {

AllocationPeak::AllocationPeak() : before_(taken) {
    most = taken;
}

std::size_t AllocationPeak::bytes() const {
    return most - before_;
}

} // namespace zelvatone
