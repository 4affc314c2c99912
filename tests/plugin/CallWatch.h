// Counts what the process asks of the system's library, from whatever library of the process.
#pragma once

#include <cstddef>

struct CallCounts {
    std::size_t allocations = 0;
    std::size_t releases = 0;
    std::size_t locks = 0;     // mutexes and read-write locks, whether they were free or not
    std::size_t outputs = 0;   // formatted prints and writes
    std::ptrdiff_t memory = 0; // bytes allocated and not given back

    CallCounts since(const CallCounts& earlier) const {
        return {allocations - earlier.allocations, releases - earlier.releases,
                locks - earlier.locks, outputs - earlier.outputs, memory - earlier.memory};
    }
};

// Since the process began. Not for sanitizer builds, whose allocators are their own. One thread.
CallCounts callCounts();
