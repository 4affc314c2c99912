// The programs that come with the instrument.
#pragma once

#include "params/SynthProgram.h"

namespace zelvatone {

// Appends the factory programs to `bank`, whose entry 0 is the default program: each starts as a
// deep copy of it and sets what its row of the table lists. An empty bank ends the process.
void buildFactoryPrograms(ProgramBank& bank);

// All 42 programs: "Default", with every parameter at its default, and the 41 others.
ProgramBank makeFactoryBank();

} // namespace zelvatone
