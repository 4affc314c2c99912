// Waiting for an editor that works only while its host idles it.
#pragma once

#include <functional>

namespace zelvatone::test {

// Calls `idle` `hz` times a second until `isReached`. Returns whether it was, in ten seconds.
bool idleUntil(const std::function<void()>& idle, const std::function<bool()>& isReached,
               int hz = 60);

} // namespace zelvatone::test
