#include "cli/terminal/RawTerminal.h"

#include "cli/terminal/Terminal.h"

#include <sys/wait.h>

#include <array>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace zelvatone {

namespace {

termios before{};

void write(std::string_view text) {
    // A terminal that takes no text is no reason to stop.
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
}

void putBack(const std::string& farewell) {
    write(farewell);
    tcsetattr(STDIN_FILENO, TCSADRAIN, &before);
}

// Characters as they come, without an echo. What Ctrl+Z and Ctrl+\ do would leave the terminal like
// this.
void makeRaw() {
    termios raw = before;
    raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    raw.c_cc[VMIN] = 0;
    raw.c_cc[VTIME] = 0;
    raw.c_cc[VSUSP] = _POSIX_VDISABLE;
    raw.c_cc[VQUIT] = _POSIX_VDISABLE;
    tcsetattr(STDIN_FILENO, TCSADRAIN, &raw);
}

// Of the process that waits: it lives as long as the pipe's other end is open.
[[noreturn]] void guard(int pipe, const std::string& farewell) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGTTOU}) {
        std::signal(signal, SIG_IGN);
    }
    char done = 0;
    if (::read(pipe, &done, 1) == 0) { // the end, without a word that all is well
        putBack(farewell);
    }
    _exit(0);
}

} // namespace

RawTerminal::RawTerminal(std::string_view greeting, std::string_view farewell)
    : farewell_(farewell) {
    if (isatty(STDIN_FILENO) != 1 || terminalKind() != TerminalKind::kErasing ||
        tcgetattr(STDIN_FILENO, &before) != 0) {
        return;
    }
    isOpen_ = true;
    startGuard();
    makeRaw();
    write(greeting);
}

void RawTerminal::startGuard() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return;
    }
    const pid_t child = fork();
    if (child == 0) {
        close(ends[1]);
        guard(ends[0], farewell_);
    }
    close(ends[0]);
    guard_ = ends[1];
}

RawTerminal::~RawTerminal() {
    if (!isOpen_) {
        return;
    }
    putBack(farewell_);
    if (guard_ >= 0) {
        constexpr char kDone = 1;
        std::signal(SIGPIPE, SIG_IGN);
        [[maybe_unused]] const auto written = ::write(guard_, &kDone, 1);
        close(guard_);
        ::wait(nullptr);
    }
}

std::optional<std::string> RawTerminal::read(std::chrono::milliseconds wait) const {
    if (!isOpen_) {
        std::this_thread::sleep_for(wait);
        return std::string();
    }
    pollfd input{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
    if (poll(&input, 1, static_cast<int>(wait.count())) <= 0) {
        return std::string();
    }
    std::array<char, 256> bytes{};
    const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count <= 0) {
        return std::nullopt;
    }
    return std::string(bytes.data(), static_cast<std::size_t>(count));
}

} // namespace zelvatone
