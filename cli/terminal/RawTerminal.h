// A terminal that gives keys as they are struck, and is left as it was after any exit.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace zelvatone {

// One at a time, made before any thread. Ctrl+C stays a signal.
class RawTerminal {
public:
    // Check isOpen() afterwards: standard input and standard error must be one terminal for a
    // person. `greeting` is written to it now, and `farewell` at the end.
    RawTerminal(std::string_view greeting, std::string_view farewell);
    // Puts everything back.
    ~RawTerminal();
    RawTerminal(const RawTerminal&) = delete;
    RawTerminal& operator=(const RawTerminal&) = delete;

    bool isOpen() const { return isOpen_; }
    // What has been typed, at once or within `wait`; none once the terminal is gone. Without a
    // terminal it waits and returns nothing.
    std::optional<std::string> read(std::chrono::milliseconds wait) const;

private:
    void startGuard();

    std::string farewell_;
    bool isOpen_ = false;
    int guard_ = -1; // the end of a pipe to a process that puts the terminal back if this one dies
};

} // namespace zelvatone
