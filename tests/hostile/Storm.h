// A few thousand random requests, the same for each seed.
#pragma once

#include "tests/kernel/Random.h"

namespace zelvatone::test {

// Opens and closes instances in any order and sends each everything, one thread. `hasDisplay`:
// with their editors. Returns when all are closed; ends the process at the first broken promise.
void stormInstances(Random& random, bool hasDisplay);

// One instance in the hands of three threads, as hosts have them: one renders and sends events, one
// automates, one has the window, reads texts and changes programs.
void stormThreads(Random& random, bool hasDisplay);

} // namespace zelvatone::test
