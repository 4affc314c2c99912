#include "cli/terminal/Terminal.h"

#include <windows.h>

namespace zelvatone {

// A console learns to erase lines, from Windows 10 on, when it is asked to.
TerminalKind terminalKind() {
    HANDLE console = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    if (GetConsoleMode(console, &mode) == FALSE) {
        return TerminalKind::kNone;
    }
    return SetConsoleMode(console, mode | ENABLE_PROCESSED_OUTPUT |
                                       ENABLE_VIRTUAL_TERMINAL_PROCESSING) != FALSE
               ? TerminalKind::kErasing
               : TerminalKind::kPlain;
}

int terminalColumns() {
    constexpr int kUsualColumns = 80;
    CONSOLE_SCREEN_BUFFER_INFO info{};
    return GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info) != FALSE
               ? info.srWindow.Right - info.srWindow.Left + 1
               : kUsualColumns;
}

} // namespace zelvatone
