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
    void open() { isOpen.store(true); }
    // User-interface thread, not from inside. When it returns nobody is inside.
    void close();

    // Any thread, without lock or allocation.
    class Pass {
    public:
        // The order makes it safe: whoever closes sees the count, or else we see the gate closed.
        explicit Pass(ControlGate& gate) : gate(gate) {
            gate.inside.fetch_add(1);
            admitted = gate.isOpen.load();
        }
        ~Pass() { gate.inside.fetch_sub(1); }
        Pass(const Pass&) = delete;
        Pass& operator=(const Pass&) = delete;

        explicit operator bool() const { return admitted; }

    private:
        ControlGate& gate;
        bool admitted;
    };

private:
    std::atomic<bool> isOpen = false;
    std::atomic<int> inside = 0;
};

} // namespace zelvatone
