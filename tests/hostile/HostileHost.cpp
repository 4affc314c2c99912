// Usage: hostile_host [--seed N] [--seconds S]
//
// A host that does whatever the interface allows, at random, and sees that the plug-in keeps its
// promises. Without --seconds, one storm of that seed, which sends the same requests each time.
// With them, the storms of this seed and of those that follow, for so long, each in a process of
// its own: an engine stays in memory until its process ends. Exit status 0 when all promises were
// kept.
#include "tests/hostile/Promise.h"
#include "tests/hostile/Storm.h"
#include "tests/vstgui/XServer.h"

#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace zelvatone::test;

struct Options {
    std::uint64_t seed = 1;
    int seconds = 0;
    const char* display = nullptr; // from the process that runs several storms
};

// Returns whether the arguments make sense.
bool read(int argc, char** argv, Options& options) {
    for (int i = 1; i + 1 < argc; i += 2) {
        const std::string name = argv[i];
        if (name == "--seed") {
            options.seed = std::strtoull(argv[i + 1], nullptr, 10);
        } else if (name == "--seconds") {
            options.seconds = std::atoi(argv[i + 1]);
        } else if (name == "--display") {
            options.display = argv[i + 1];
        } else {
            return false;
        }
    }
    return argc % 2 == 1;
}

// Names an X server in the environment; returns whether there is one.
bool startDisplay(const Options& options) {
    // NOLINTBEGIN(concurrency-mt-unsafe): before any thread
    if (options.display != nullptr) {
        setenv("DISPLAY", options.display, 1);
        return *options.display != '\0';
    }
    const std::string why = VSTGUI::test::XServer::start();
    if (!why.empty()) {
        std::fprintf(stderr, "without editor: %s\n", why.c_str());
    }
    // A click may ask for a browser, which is not to come.
    setenv("PATH", "/nowhere", 1);
    // NOLINTEND(concurrency-mt-unsafe)
    return why.empty();
}

int runStorm(std::uint64_t seed, bool hasDisplay) {
    // The engine tells of values without a meaning, line by line.
    if (std::freopen("/dev/null", "w", stdout) == nullptr) {
        return 2;
    }
    setSeed(seed);
    Random random(seed);
    stormInstances(random, hasDisplay);
    stormThreads(random, hasDisplay);
    std::fprintf(stderr, "seed %" PRIu64 ": %" PRIu64 " requests\n", seed, requestCount());
    return 0;
}

// The same program, for one seed. Returns the status of its process.
int runStormInAProcess(std::uint64_t seed, bool hasDisplay) {
    std::string program = "/proc/self/exe";
    std::string seedOption = "--seed";
    std::string seedValue = std::to_string(seed);
    std::string displayOption = "--display";
    // NOLINTNEXTLINE(concurrency-mt-unsafe): no threads in this process
    std::string display = hasDisplay ? std::getenv("DISPLAY") : "";
    char* arguments[] = {program.data(),       seedOption.data(), seedValue.data(),
                         displayOption.data(), display.data(),    nullptr};
    pid_t process = 0;
    int status = 0;
    if (posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments, environ) != 0 ||
        waitpid(process, &status, 0) != process) {
        return -1;
    }
    return status;
}

int runStorms(const Options& options, bool hasDisplay) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(options.seconds);
    std::uint64_t seed = options.seed;
    do {
        if (const int status = runStormInAProcess(seed, hasDisplay); status != 0) {
            std::fprintf(stderr,
                         "seed %" PRIu64
                         " ended with status %#x; again: hostile_host --seed %" PRIu64 "\n",
                         seed, static_cast<unsigned>(status), seed);
            return 1;
        }
        ++seed;
    } while (std::chrono::steady_clock::now() < end);
    std::fprintf(stderr, "seeds %" PRIu64 " to %" PRIu64 " kept every promise\n", options.seed,
                 seed - 1);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    Options options;
    if (!read(argc, argv, options)) {
        std::fprintf(stderr, "usage: hostile_host [--seed N] [--seconds S]\n");
        return 2;
    }
    const bool hasDisplay = startDisplay(options);
    return options.seconds > 0 ? runStorms(options, hasDisplay)
                               : runStorm(options.seed, hasDisplay);
}
