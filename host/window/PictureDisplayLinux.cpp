#include "host/window/PictureDisplay.h"

#include "host/Error.h"
#include "host/text/Format.h"
#include "host/window/DisplayCookie.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <string>

namespace zelvatone {

namespace {

// What a shell returns for a command that it does not find.
constexpr int kNotInstalled = 127;

// Of our own server; one display at a time.
std::optional<DisplayCookie> ourCookie;
// What the user's programs find their keys in, put aside meanwhile.
std::optional<std::string> usersAuthority;

// NOLINTBEGIN(concurrency-mt-unsafe): one thread yet, or the windows are closed
void useOwnCookie() {
    const char* authority = std::getenv("XAUTHORITY");
    usersAuthority = authority != nullptr ? std::optional<std::string>(authority) : std::nullopt;
    setenv("XAUTHORITY", ourCookie->path().c_str(), 1);
}

void useUsersCookie() {
    if (usersAuthority) {
        setenv("XAUTHORITY", usersAuthority->c_str(), 1);
    } else {
        unsetenv("XAUTHORITY");
    }
}
// NOLINTEND(concurrency-mt-unsafe)

bool hasDisplay() {
    const char* display = std::getenv("DISPLAY"); // NOLINT(concurrency-mt-unsafe): one thread yet
    return display != nullptr && *display != '\0';
}

// In the new process: becomes the server, or ends. The server writes its number to `numberPipe`,
// prints nothing else, lets in who has the cookie in the file `authority`, and does not outlive us.
[[noreturn]] void becomeServer(const std::string& numberPipe, const std::string& authority) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    execlp("Xvfb", "Xvfb", "-displayfd", numberPipe.c_str(), "-screen", "0", "1600x1200x24",
           "-nolisten", "tcp", "-noreset", "-auth", authority.c_str(), nullptr);
    _exit(kNotInstalled);
}

// The number ends with a line feed. Empty when none came.
std::string readNumber(int pipe) {
    std::string number;
    char digit = 0;
    for (;;) {
        const ssize_t count = read(pipe, &digit, 1);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count != 1) {
            return {};
        }
        if (digit == '\n') {
            return number;
        }
        number += digit;
    }
}

// Waits for the process to end and gives its exit status; -1 for another end.
int waitFor(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

[[noreturn]] void failToStart(int status) {
    const std::string reason =
        status == kNotInstalled ? "Xvfb is not installed" : "Xvfb does not start";
    throw InputError("there is no display to open the editor on: DISPLAY is not set, and " +
                     reason);
}

} // namespace

PictureDisplay::PictureDisplay() {
    if (hasDisplay()) {
        return;
    }
    ourCookie.emplace();
    const std::string authority = formatText("/proc/self/fd/{}", ourCookie->descriptor());
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        failToStart(-1);
    }
    const std::string numberPipe = std::to_string(ends[1]);
    server_ = fork();
    if (server_ == 0) {
        close(ends[0]);
        becomeServer(numberPipe, authority);
    }
    close(ends[1]);
    const std::string number = server_ < 0 ? "" : readNumber(ends[0]);
    close(ends[0]);
    if (number.empty()) {
        failToStart(server_ < 0 ? -1 : waitFor(server_));
    }
    useOwnCookie();
    setenv("DISPLAY", (":" + number).c_str(), 1); // NOLINT(concurrency-mt-unsafe): one thread yet
}

PictureDisplay::~PictureDisplay() {
    if (server_ > 0) {
        kill(server_, SIGTERM);
        waitFor(server_);
        unsetenv("DISPLAY"); // NOLINT(concurrency-mt-unsafe): the windows are closed
        useUsersCookie();
        ourCookie.reset();
    }
}

} // namespace zelvatone
