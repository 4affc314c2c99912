#include "tests/hostile/Promise.h"

#include <atomic>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>

namespace zelvatone::test {

namespace {

std::uint64_t currentSeed = 0;
std::atomic<std::uint64_t> requests = 0;

} // namespace

void setSeed(std::uint64_t seed) {
    currentSeed = seed;
}

void countRequest() {
    requests.fetch_add(1, std::memory_order_relaxed);
}

std::uint64_t requestCount() {
    return requests.load(std::memory_order_relaxed);
}

void expectPromise(bool holds, const char* promise) {
    if (!holds) {
        std::fprintf(stderr, "broken promise: %s (seed %" PRIu64 ", request %" PRIu64 ")\n",
                     promise, currentSeed, requestCount());
        std::abort();
    }
}

} // namespace zelvatone::test
