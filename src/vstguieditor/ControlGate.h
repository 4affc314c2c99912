// Keeps the controls of an open window alive for the threads that set them.
#pragma once

#include <atomic>

namespace zelvatone {

// A parameter may be set on any thread while the user-interface thread closes the window. A thread
// that sets one passes through this gate. It never waits: it finds the gate open or returns, and
// while it is inside the controls stay. Only the closing thread waits, for the threads that entered
// before.
class ControlGate {
public:
    // User-interface thread, with the controls complete.
    void open() { isOpen_.store(true); }
    // User-interface thread, not from inside. When it returns no thread is inside.
    void close();

    // Any thread, without lock or allocation.
    class Pass {
    public:
        // The order makes it safe: the closing thread sees the count, or this one a closed gate.
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
