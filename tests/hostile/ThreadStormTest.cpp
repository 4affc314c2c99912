// The hostile host's threads under the thread sanitizer.
#include "tests/hostile/Promise.h"
#include "tests/hostile/Storm.h"
#include "tests/vstgui/XServer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>

namespace zelvatone::test {
namespace {

// A broken promise ends the process.
TEST(HostileThreads, LeaveAnInstanceThatPlaysLikeNew) {
    const bool hasDisplay = VSTGUI::test::XServer::start().empty();
    setenv("PATH", "/nowhere", 1); // NOLINT(concurrency-mt-unsafe): no threads yet, and no browser
    testing::internal::CaptureStdout(); // the engine tells of values without a meaning
    for (std::uint64_t seed = 1; seed <= 3; ++seed) {
        setSeed(seed);
        Random random(seed);
        stormThreads(random, hasDisplay);
    }
    testing::internal::GetCapturedStdout();
}

} // namespace
} // namespace zelvatone::test
