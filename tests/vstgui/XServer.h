// An X server of the tests' own, without a screen.
#pragma once

#include <sys/types.h>

#include <string>

namespace VSTGUI::test {

// One a process, from the first call of `start` to the end, on a display number that was free.
class XServer {
public:
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;
    ~XServer();

    // Starts the server with pixels of `depth` bits, unless it runs already, and names it in the
    // environment. Returns "", or that it is not installed. Throws if it does not start.
    static std::string start(int depth = 24);
    // Ends the server without a word to its clients, as a crash does. `start` starts a new one.
    static void kill();

private:
    XServer() = default;
    static XServer& instance();
    std::string launch(int newDepth);
    void stop(int signal);

    pid_t process = -1;
    int depth = 0;
};

} // namespace VSTGUI::test
