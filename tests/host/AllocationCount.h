// Counts the memory of the program that it is linked into, byte by byte as asked for.
#pragma once

#include <cstddef>

namespace zelvatone {

// The most memory that operator new had given out at one time since the object was made, beyond
// what it had given out then. One object at a time, on one thread.
class AllocationPeak {
public:
    AllocationPeak();
    std::size_t bytes() const;

private:
    std::size_t before_;
};

} // namespace zelvatone
