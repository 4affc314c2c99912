#include "cli/terminal/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace zelvatone {

TerminalKind terminalKind() {
    if (isatty(STDERR_FILENO) != 1) {
        return TerminalKind::kNone;
    }
    const char* type = std::getenv("TERM"); // NOLINT(concurrency-mt-unsafe): no thread sets any
    return type == nullptr || *type == '\0' || std::string_view(type) == "dumb"
               ? TerminalKind::kPlain
               : TerminalKind::kErasing;
}

int terminalColumns() {
    constexpr int kUsualColumns = 80;
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col
                                                                           : kUsualColumns;
}

} // namespace zelvatone
