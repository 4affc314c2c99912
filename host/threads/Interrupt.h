// Lets a long job end in good order when the user stops it.
#pragma once

namespace zelvatone {

// Thrown where a job notices; carries the signal that asked for the end.
struct Interrupted {
    int signal;
};

// While it lives, the signals of Ctrl+C, of `kill` and of a closed terminal do not end the
// process, but are noted. A second one of the same kind ends it at once. One at a time.
class InterruptWatch {
public:
    InterruptWatch();
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    // Throws Interrupted when a signal has come.
    static void check();
};

// Ends the process by that signal, as if it had not been caught, so that a shell sees it.
[[noreturn]] void endBySignal(int signal);

} // namespace zelvatone
