#include "dataset/FreedMemory.h"

#include <malloc.h>

namespace zelvatone {

void keepFreedMemory() {
    constexpr int kLargest = 1 << 25; // bytes of an allocation: the most that the library takes
    constexpr int kKept = 1 << 30;    // bytes
    // NOLINTBEGIN(concurrency-mt-unsafe): called before there are threads
    mallopt(M_MMAP_THRESHOLD, kLargest);
    mallopt(M_TRIM_THRESHOLD, kKept);
    // NOLINTEND(concurrency-mt-unsafe)
}

} // namespace zelvatone
