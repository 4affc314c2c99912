#include "cli/terminal/StandardOutput.h"

#include "host/Error.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace zelvatone {

namespace {

[[noreturn]] void fail(int error) {
    throw InputError("cannot write to standard output: " + std::generic_category().message(error));
}

} // namespace

StandardOutput::StandardOutput(bool pluginsToStandardError)
    : descriptor_(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3)) {
    const int elsewhere = pluginsToStandardError ? fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3)
                                                 : open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (elsewhere >= 0) {
        dup2(elsewhere, STDOUT_FILENO);
        close(elsewhere);
    }
}

StandardOutput::~StandardOutput() {
    close(descriptor_);
}

void StandardOutput::print(const std::string& text) const {
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t put = write(descriptor_, text.data() + done, text.size() - done);
        if (put < 0 && errno != EINTR) {
            fail(errno);
        }
        done += put > 0 ? static_cast<std::size_t>(put) : 0;
    }
}

} // namespace zelvatone
