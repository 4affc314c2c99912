#include "tests/support/Program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <stdexcept>
#include <thread>

namespace zelvatone {

namespace {

constexpr auto kPollInterval = std::chrono::milliseconds(2);
// Many times what any test's run takes, and within the time that CTest gives a test.
constexpr auto kLongestRun = std::chrono::seconds(100);

} // namespace

Program::Program(const std::vector<std::string>& command, const TemporaryFolder& folder)
    : output_(folder / "stdout"), errors_(folder / "stderr") {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& word : command) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output_.c_str(), flags, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors_.c_str(), flags, 0600);
    const int failed =
        posix_spawn(&id_, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) {
        throw std::runtime_error("cannot start " + command[0]);
    }
}

int Program::waitForEnd() const {
    int status = 0;
    for (auto waited = kPollInterval; waitpid(id_, &status, WNOHANG) == 0;
         waited += kPollInterval) {
        if (waited > kLongestRun) {
            kill(id_, SIGKILL);
        }
        std::this_thread::sleep_for(kPollInterval);
    }
    return status;
}

ProgramResult Program::wait() {
    const int status = waitForEnd();
    ProgramResult result;
    result.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    result.output = readText(output_);
    result.errors = readText(errors_);
    return result;
}

ProgramResult zelvatoneWith(const std::vector<std::string>& arguments) {
    const TemporaryFolder folder;
    std::vector<std::string> command{TEST_PROGRAM};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return Program(command, folder).wait();
}

ProgramResult shellWith(const std::string& line, const std::vector<std::string>& arguments) {
    const TemporaryFolder folder;
    std::vector<std::string> command{"/bin/bash", "-c", line, TEST_PROGRAM};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return Program(command, folder).wait();
}

std::string testPlugin(const std::string& name) {
    return TEST_PLUGINS + name + ".so";
}

} // namespace zelvatone
