// Keeps the controls of an open window alive for the threads that set them.
#pragma once

#include <atomic>

namespace zelvatone {

// A parameter may be set on any thread while the user-interface thread closes the window. Whoever
// sets one passes through here: he is never made to wait, finds the gate open or goes away, and
// while he is inside the controls stay. Only the thread that closes waits, for those who entered
// before.
class ControlGate {
public:
    // User-interface thread, with the controls complete.
    void open() { isOpen_.store(true); }
    // User-interface thread, not from inside. When it returns nobody is inside.
    void close();

    // Any thread, without lock or allocation.
    class Pass {
    public:
        // The order makes it safe: whoever closes sees the count, or else we see the gate closed.
        explicit Pass(ControlGate& gate) : gate_(gate) {
            gate_.inside_.fetch_add(1);
            admitted_ = gate_.isOpen_.load();
        }
        ~Pass() { gate_.inside_.fetch_sub(1); }
        Pass(const Pass&) = delete;
        Pass& operator=(const Pass&) = delete;

        explicit operator bool() const { return admitted_; }

    private:
        ControlGate& gate_;
        bool admitted_;
    };

private:
    std::atomic<bool> isOpen_ = false;
    std::atomic<int> inside_ = 0;
};

} // namespace zelvatone
