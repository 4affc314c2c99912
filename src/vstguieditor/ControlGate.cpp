#include "vstguieditor/ControlGate.h"

#include <chrono>
#include <thread>

namespace zelvatone {

void ControlGate::close() {
    isOpen_.store(false);
    while (inside_.load() != 0) {
        // To sleep rather than to yield lets a thread of lower priority finish too.
        std::this_thread::sleep_for(std::chrono::microseconds(50));
    }
}

} // namespace zelvatone
