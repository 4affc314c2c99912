// The program, called by the main() of each platform.
#pragma once

namespace zelvatone {

// `argv` is UTF-8. Returns the exit status.
int runProgram(int argc, char** argv);

} // namespace zelvatone
