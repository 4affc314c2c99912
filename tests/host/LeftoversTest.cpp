// What killed processes leave in the folders of other files.
#include "host/files/Leftovers.h"

#include "tests/support/TemporaryFolder.h"

#include <fcntl.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Leftovers, UnusedFileAndFolderAreSwept) {
    const TemporaryFolder folder;
    writeText(hiddenName(folder.path(), 0), "half");
    std::filesystem::create_directory(hiddenName(folder.path(), 1));
    writeText(hiddenName(folder.path(), 1) / "page.html", "half");
    sweepLeftovers(folder.path());
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(Leftovers, FileInUseStaysUntilItIsClosed) {
    const TemporaryFolder folder;
    const auto name = hiddenName(folder.path(), 0);
    const int file = open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_TRUE(claim(file));
    sweepLeftovers(folder.path());
    EXPECT_TRUE(std::filesystem::exists(name));
    close(file);
    sweepLeftovers(folder.path());
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(Leftovers, FilesOfOtherNamesAndLinksStay) {
    const TemporaryFolder folder;
    writeText(folder / ".hidden", "mine");
    writeText(folder / "zelvatone-1-0", "mine");
    std::filesystem::create_symlink(".hidden", hiddenName(folder.path(), 0));
    const auto names = folder.names();
    sweepLeftovers(folder.path());
    EXPECT_EQ(folder.names(), names);
}

TEST(Leftovers, FileOfAnotherUserStays) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only an administrator gives files away";
    }
    const TemporaryFolder folder;
    const auto name = hiddenName(folder.path(), 0);
    writeText(name, "theirs");
    constexpr uid_t kAnotherUser = 12345;
    ASSERT_EQ(chown(name.c_str(), kAnotherUser, kAnotherUser), 0);
    sweepLeftovers(folder.path());
    EXPECT_THAT(folder.names(), ElementsAre(name.filename().string()));
}

} // namespace
} // namespace zelvatone
