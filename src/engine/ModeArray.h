// The storage of one array of a mode bank.
#pragma once

#include <cstddef>
#include <cstring>
#include <new>
#include <vector>

namespace zelvatone {

// Memory that vector code may read and write in whole steps: it starts on a boundary of 64 bytes,
// the widest vector there is, and its last bytes are filled up to the next one with zeroes.
template<class Element>
struct PaddedAllocator {
    using value_type = Element;
    static constexpr std::size_t kStep = 64;

    PaddedAllocator() = default;
    template<class Other>
    PaddedAllocator(const PaddedAllocator<Other>& /*other*/) {}

    Element* allocate(std::size_t count) {
        const std::size_t bytes = (count * sizeof(Element) + kStep - 1) / kStep * kStep;
        void* memory = ::operator new (bytes, std::align_val_t{kStep});
        std::memset(memory, 0, bytes);
        return static_cast<Element*>(memory);
    }
    void deallocate(Element* elements, std::size_t /*count*/) {
        ::operator delete (elements, std::align_val_t{kStep});
    }
    bool operator==(const PaddedAllocator&) const = default;
};

using ModeArray = std::vector<float, PaddedAllocator<float>>;

} // namespace zelvatone
