#include "tests/plugin/FreeWatch.h"

#include <windows.h>

#include <algorithm>
#include <vector>

namespace {

std::vector<const char*> watched;

bool holds(const PROCESS_HEAP_ENTRY& entry, const char* address) {
    const auto* begin = static_cast<const char*>(entry.lpData);
    return (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 && address >= begin &&
           address < begin + entry.cbData;
}

// Addresses that lie in a block of the heap that is in use.
std::size_t countOwned(HANDLE heap) {
    std::size_t owned = 0;
    HeapLock(heap);
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heap, &entry) != FALSE) {
        owned += std::ranges::count_if(
            watched, [&entry](const char* address) { return holds(entry, address); });
    }
    HeapUnlock(heap);
    return owned;
}

} // namespace

void watchForFree(const void* address) {
    watched.push_back(static_cast<const char*>(address));
}

std::size_t freedOfWatched() {
    HANDLE heaps[64]; // a process has a handful
    const DWORD count = GetProcessHeaps(64, heaps);
    std::size_t owned = 0;
    for (DWORD i = 0; i < count && i < 64; ++i) {
        owned += countOwned(heaps[i]);
    }
    return watched.size() - owned;
}
