// The program behind main(), of which each platform has its own.
#pragma once

namespace zelvatone {

// `argv` is UTF-8. Answers the exit status.
int runProgram(int argc, char** argv);

} // namespace zelvatone
