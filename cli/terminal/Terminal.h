// What the terminal of standard error can do.
#pragma once

namespace zelvatone {

enum class TerminalKind {
    kNone,  // a file or a pipe: no person watches
    kPlain, // prints lines one after the other
    kErasing
};

TerminalKind terminalKind();

// Characters in a line; 80 where the terminal does not say.
int terminalColumns();

} // namespace zelvatone
