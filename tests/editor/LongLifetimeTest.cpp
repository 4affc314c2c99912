// The editor as a long session of a host opens and closes it.
#include "tests/editor/EditorFixture.h"
#include "tests/editor/OpenFiles.h"

#include <unistd.h>

#include <cstddef>
#include <fstream>

namespace zelvatone::test {
namespace {

constexpr int kRounds = 2000;
// The libraries below fill caches of their own over the first hundreds of openings.
constexpr int kFirstRounds = 500;
// The picture of the window once: an opening that keeps any of its 20 pictures, or 700 bytes of
// anything else, takes more in 2000 rounds. The allocator's own share changes by less.
constexpr std::size_t kFlat = std::size_t{kWidth} * kHeight * 4;

// Bytes of this process that are in memory. The second number of the file counts pages.
std::size_t residentBytes() {
    std::ifstream file("/proc/self/statm");
    std::size_t all = 0;
    std::size_t resident = 0;
    file >> all >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

class LongSession : public EditorTest {
protected:
    void openAndClose(int times) {
        for (int round = 0; round < times; ++round) {
            ASSERT_TRUE(openEditor()) << round;
            plugin->closeEditor();
            ASSERT_TRUE(window->children().empty()) << round;
        }
        window->keysHeard(); // takes the events out that pile up on the host's side
    }
};

TEST_F(LongSession, NeedsNoMoreMemoryAndFilesAfterTwoThousandOpenings) {
    openAndClose(kFirstRounds);
    const auto files = countOpenFiles();
    const std::size_t bytes = residentBytes();
    openAndClose(kRounds);
    EXPECT_EQ(countOpenFiles(), files);
    // A sanitizer keeps freed memory for a while; its own leak check does the work there.
    if (!ZELVATONE_SANITIZED) {
        EXPECT_LT(residentBytes(), bytes + kFlat);
    }
    RecordProperty("resident_bytes_more", static_cast<int>(residentBytes() - bytes));
}

} // namespace
} // namespace zelvatone::test
