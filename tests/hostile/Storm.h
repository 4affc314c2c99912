// A few thousand random requests, the same for each seed.
#pragma once

#include "tests/kernel/Random.h"

namespace zelvatone::test {

// Opens and closes instances in any order and sends each everything, one thread. `hasDisplay`:
// with their editors. Returns when all are closed; ends the process at the first broken promise.
void stormInstances(Random& random, bool hasDisplay);

} // namespace zelvatone::test
