// The 41 programs that come with the instrument.
#pragma once

#include "params/SynthProgram.h"

namespace zelvatone {

// Appends the factory programs to `bank`, whose entry 0 is the default program: each starts as a
// deep copy of it and sets what its row of the table lists. An empty bank ends the process.
void buildFactoryPrograms(ProgramBank& bank);

} // namespace zelvatone
