// What a plug-in owes every host. A broken promise ends the process and tells how to see it again.
#pragma once

#include <cstdint>

namespace zelvatone::test {

// The seed of this process's storm. Before any thread starts.
void setSeed(std::uint64_t seed);
// Counts a request to the plug-in. Any thread.
void countRequest();
// Requests since the process began.
std::uint64_t requestCount();

// Ends the process with a message when `holds` is false. `promise`: a sentence. Any thread.
void expectPromise(bool holds, const char* promise);

} // namespace zelvatone::test
