// Watches which pieces of memory are given back, by whatever library of the process.
#pragma once

#include <cstddef>

// The pieces given back, since the first of these, that held one of those addresses. Not for
// sanitizer builds, whose allocators are their own. One thread.
void watchForFree(const void* address);
std::size_t freedOfWatched();
