#include "tests/vstgui/XServer.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace VSTGUI::test {
namespace {

// As a shell says it.
constexpr int kNotInstalled = 127;

// In the new process: becomes the server, or ends. The server tells its number at `numberPipe`.
[[noreturn]] void becomeServer(int depth, int numberPipe) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nowhere, STDERR_FILENO);
    const std::string number = std::to_string(numberPipe);
    // Room for an editor of three times its size.
    const std::string screen = "2400x1700x" + std::to_string(depth);
    execlp("Xvfb", "Xvfb", "-displayfd", number.c_str(), "-screen", "0", screen.c_str(),
           "-nolisten", "tcp", "-noreset", nullptr);
    _exit(kNotInstalled);
}

// The number ends with a line feed.
std::string readNumber(int pipe) {
    std::string number;
    char digit = 0;
    while (read(pipe, &digit, 1) == 1 && digit != '\n') {
        number += digit;
    }
    return digit == '\n' ? number : "";
}

} // namespace

XServer& XServer::instance() {
    static XServer server;
    return server;
}

std::string XServer::start(int depth) {
    XServer& server = instance();
    return server.depth == depth ? "" : server.launch(depth);
}

void XServer::kill() {
    instance().stop(SIGKILL);
}

std::string XServer::launch(int newDepth) {
    stop(SIGTERM);
    int ends[2];
    if (pipe(ends) != 0) {
        return "no pipe to the X server";
    }
    process = fork();
    if (process == 0) {
        close(ends[0]);
        becomeServer(newDepth, ends[1]);
    }
    close(ends[1]);
    const std::string number = readNumber(ends[0]);
    close(ends[0]);
    if (number.empty()) {
        int status = 0;
        waitpid(std::exchange(process, -1), &status, 0);
        if (WIFEXITED(status) && WEXITSTATUS(status) == kNotInstalled) {
            return "Xvfb is not installed (Debian package xvfb)";
        }
        throw std::runtime_error("Xvfb does not start");
    }
    // NOLINTNEXTLINE(concurrency-mt-unsafe): no other thread runs before there is a server.
    setenv("DISPLAY", (":" + number).c_str(), 1);
    depth = newDepth;
    return "";
}

XServer::~XServer() {
    stop(SIGTERM);
}

void XServer::stop(int signal) {
    if (process > 0) {
        ::kill(process, signal);
        waitpid(process, nullptr, 0);
    }
    process = -1;
    depth = 0;
}

} // namespace VSTGUI::test
