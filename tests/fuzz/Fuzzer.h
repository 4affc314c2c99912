// What a fuzzer defines, and what it says when a promise is broken.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

// Reads one input of any bytes. Ends the process where the reader under test breaks a promise; an
// exception that it does not promise does the same. Returns 0. The name is the fuzzing engine's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace zelvatone::test {

// Ends the process with `promise` on standard error unless it `holds`.
inline void require(bool holds, const char* promise) {
    if (!holds) {
        std::fprintf(stderr, "broken promise: %s\n", promise);
        std::abort();
    }
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

} // namespace zelvatone::test
