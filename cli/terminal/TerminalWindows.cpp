#include "cli/terminal/Terminal.h"

#include <windows.h>

namespace zelvatone {

// A console learns to erase lines, from Windows 10 on, when it is asked to.
bool isWatched() {
    HANDLE console = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    return GetConsoleMode(console, &mode) != FALSE &&
           SetConsoleMode(console, mode | ENABLE_PROCESSED_OUTPUT |
                                       ENABLE_VIRTUAL_TERMINAL_PROCESSING) != FALSE;
}

} // namespace zelvatone
