// Values that no host means to send, and that arrive all the same.
#pragma once

#include "tests/kernel/Random.h"
#include "vst2/aeffectx.h"

namespace zelvatone::test {

// Mostly 0 to 1, as hosts set parameters; else not a number, infinite, huge, tiny or negative.
float oddParameter(Random& random);
// Hz.
float oddRate(Random& random);
// Mostly below `count`; else negative or far beyond. Never `count` itself, which ends the process
// when a parameter has that number.
VstInt32 oddIndex(Random& random, VstInt32 count);
// Any 32 or 64 bits, with the ends of both ranges among them.
VstIntPtr oddNumber(Random& random);
// Samples, as an event's place in a block of `frames`: mostly in it.
VstInt32 oddOffset(Random& random, VstInt32 frames);

} // namespace zelvatone::test
