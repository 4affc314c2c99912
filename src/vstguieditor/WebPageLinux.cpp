#include "vstguieditor/WebPage.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace zelvatone {

namespace {

// What the new process starts with: no file of the host's, and nothing to say.
class FileActions {
public:
    FileActions() {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDWR, 0);
        posix_spawn_file_actions_adddup2(&actions_, STDIN_FILENO, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions_, STDIN_FILENO, STDERR_FILENO);
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
    }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

// A session of its own, so that the browser outlives the host and its terminal, and the signal
// handling that programs expect, whatever the host has done to its own.
class Attributes {
public:
    Attributes() {
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK |
                                                   POSIX_SPAWN_SETSIGDEF);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
    }
    ~Attributes() { posix_spawnattr_destroy(&attributes_); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;

    const posix_spawnattr_t* get() const { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
};

// The shell has no child by then, so this takes no time. A host that waits for every child itself
// may be faster.
void awaitEnd(pid_t shell) {
    while (waitpid(shell, nullptr, 0) < 0 && errno == EINTR) {
    }
}

} // namespace

// The shell starts the opener in the background and ends at once: the opener, which may last as
// long as the browser, then is the child of the system and not of the host.
void openWebPage(const char* address) {
    // The interface takes changeable text, and changes none.
    char shell[] = "sh";
    char option[] = "-c";
    char script[] = "xdg-open \"$0\" &";
    char* const arguments[] = {shell, option, script, const_cast<char*>(address), nullptr};
    pid_t process = 0;
    if (posix_spawn(&process, "/bin/sh", FileActions().get(), Attributes().get(), arguments,
                    environ) == 0) {
        awaitEnd(process);
    }
}

} // namespace zelvatone
