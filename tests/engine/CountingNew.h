// Counts what the whole program allocates through operator new.
#pragma once

#include <cstddef>

namespace zelvatone::test {

struct AllocationCounts {
    std::size_t allocations = 0;
    std::size_t releases = 0;
    std::size_t lastSize = 0; // bytes of the last allocation

    AllocationCounts since(const AllocationCounts& earlier) const {
        return {allocations - earlier.allocations, releases - earlier.releases, lastSize};
    }
};

// All kinds of new and delete, arrays and aligned ones included.
AllocationCounts allocationCounts();

} // namespace zelvatone::test
