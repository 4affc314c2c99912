#include "cli/terminal/Terminal.h"

#include <unistd.h>

namespace zelvatone {

bool isWatched() {
    return isatty(STDERR_FILENO) == 1;
}

} // namespace zelvatone
