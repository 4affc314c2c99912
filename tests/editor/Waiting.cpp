#include "tests/editor/Waiting.h"

#include <chrono>
#include <thread>

namespace zelvatone::test {

bool idleUntil(const std::function<void()>& idle, const std::function<bool()>& isReached, int hz) {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (std::chrono::steady_clock::now() < limit) {
        idle();
        if (isReached()) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1000 / hz));
    }
    return false;
}

} // namespace zelvatone::test
