#include "host/files/OutputFile.h"

#include "host/Error.h"
#include "tests/support/TemporaryFolder.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

void write(OutputFile& file, const std::string& text) {
    file.write(text.data(), static_cast<std::int64_t>(text.size()));
}

TEST(OutputFile, AppearsUnderItsNameOnlyAtTheCommit) {
    const TemporaryFolder folder;
    OutputFile file(folder / "a.wav");
    write(file, "hello");
    EXPECT_FALSE(std::filesystem::exists(folder / "a.wav"));
    file.commit();
    EXPECT_EQ(readText(folder / "a.wav"), "hello");
    EXPECT_THAT(folder.names(), ElementsAre("a.wav"));
}

TEST(OutputFile, LeavesNothingWithoutACommit) {
    const TemporaryFolder folder;
    {
        OutputFile file(folder / "a.wav");
        write(file, "half");
    }
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(OutputFile, LeavesAnEarlierFileAsItWasWithoutACommit) {
    const TemporaryFolder folder;
    writeText(folder / "a.wav", "before");
    { write(*std::make_unique<OutputFile>(folder / "a.wav"), "half"); }
    EXPECT_EQ(readText(folder / "a.wav"), "before");
    EXPECT_EQ(folder.names().size(), 1U);
}

TEST(OutputFile, ReplacesAnEarlierFileAtTheCommit) {
    const TemporaryFolder folder;
    writeText(folder / "a.wav", "before");
    OutputFile file(folder / "a.wav");
    write(file, "after");
    file.commit();
    EXPECT_EQ(readText(folder / "a.wav"), "after");
}

TEST(OutputFile, WritesThroughALinkAndKeepsIt) {
    const TemporaryFolder folder;
    writeText(folder / "real.wav", "before");
    std::filesystem::create_symlink("real.wav", folder / "link.wav");
    OutputFile file(folder / "link.wav");
    write(file, "after");
    file.commit();
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.wav"));
    EXPECT_EQ(readText(folder / "real.wav"), "after");
}

TEST(OutputFile, WritesTheFileThatALinkAnnounces) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("real.wav", folder / "link.wav");
    OutputFile file(folder / "link.wav");
    write(file, "after");
    file.commit();
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.wav"));
    EXPECT_EQ(readText(folder / "real.wav"), "after");
}

// In a folder like /tmp, another user may put a link under the name that is about to be written.
TEST(OutputFile, RefusesAnotherUsersLinkInAFolderForAll) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only an administrator gives files away";
    }
    const TemporaryFolder folder;
    writeText(folder / "letter", "dear");
    std::filesystem::create_symlink("letter", folder / "out.wav");
    constexpr uid_t kAnotherUser = 12345;
    ASSERT_EQ(lchown((folder / "out.wav").c_str(), kAnotherUser, kAnotherUser), 0);
    EXPECT_NO_THROW(OutputFile(folder / "out.wav")); // no other user can have put it there
    chmod(folder.path().c_str(), 01777);
    try {
        OutputFile file(folder / "out.wav");
        ADD_FAILURE() << "accepted";
    } catch (const InputError& error) {
        EXPECT_THAT(error.what(), HasSubstr("out.wav is another user's link"));
    }
    EXPECT_EQ(readText(folder / "letter"), "dear");
}

class OutputFileModes : public ::testing::TestWithParam<mode_t> {};

TEST_P(OutputFileModes, StayWhenAFileIsReplaced) {
    const TemporaryFolder folder;
    writeText(folder / "a.wav", "before");
    chmod((folder / "a.wav").c_str(), GetParam());
    OutputFile file(folder / "a.wav");
    write(file, "after");
    file.commit();
    EXPECT_EQ(readText(folder / "a.wav"), "after");
    EXPECT_EQ(std::filesystem::status(folder / "a.wav").permissions(),
              static_cast<std::filesystem::perms>(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(, OutputFileModes, ::testing::Values(0600, 0640, 0664, 0777));

// Writes half a file and is killed. With `root`, that folder is all that the process sees.
void writeAndBeKilled(const std::filesystem::path& path, const char* root = nullptr) {
    const pid_t child = fork();
    if (child == 0) {
        if (root != nullptr && chroot(root) != 0) {
            _exit(1);
        }
        OutputFile file(path);
        write(file, "half");
        raise(SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
}

TEST(OutputFile, LeavesNothingThatTheNextFileDoesNotRemoveWhenItsProcessIsKilled) {
    const TemporaryFolder folder;
    writeAndBeKilled(folder / "a.wav");
    OutputFile(folder / "b.wav").commit();
    EXPECT_THAT(folder.names(), ElementsAre("b.wav"));
}

// Without /proc no file without a name gets one, as on file systems that have no such files.
TEST(OutputFile, IsHiddenWhereFilesHaveNamesFromTheStart) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only an administrator changes the root";
    }
    const TemporaryFolder folder;
    writeAndBeKilled("/a.wav", folder.path().c_str());
    ASSERT_EQ(folder.names().size(), 1U);
    EXPECT_THAT(folder.names()[0], ::testing::StartsWith(".zelvatone-"));
    OutputFile(folder / "b.wav").commit();
    EXPECT_THAT(folder.names(), ElementsAre("b.wav"));
}

TEST(OutputFile, HasTheModeOfAnyNewFile) {
    const TemporaryFolder folder;
    const mode_t before = umask(027);
    OutputFile file(folder / "a.wav");
    file.commit();
    umask(before);
    EXPECT_EQ(std::filesystem::status(folder / "a.wav").permissions(),
              static_cast<std::filesystem::perms>(0640));
}

TEST(OutputFile, RefusesFoldersDevicesAndFoldersThatAreNotThere) {
    const TemporaryFolder folder;
    EXPECT_THROW(OutputFile(folder.path()), InputError);
    EXPECT_THROW(OutputFile("/dev/full"), InputError);
    EXPECT_THROW(OutputFile(folder / "no" / "a.wav"), InputError);
}

// Stands for a full disk: the limit on a file's size is reached in the middle of a write.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    void (*handler_)(int);
    rlimit before_{};
};

TEST(OutputFile, RemembersAFailedWriteAndCommitsNothing) {
    const TemporaryFolder folder;
    {
        const FileSizeLimit limit(100);
        OutputFile file(folder / "a.wav");
        write(file, std::string(90, 'x'));
        EXPECT_NO_THROW(file.check());
        write(file, std::string(90, 'x'));
        try {
            file.commit();
            ADD_FAILURE() << "committed";
        } catch (const InputError& error) {
            EXPECT_THAT(error.what(), HasSubstr("a.wav: File too large"));
        }
    }
    EXPECT_THAT(folder.names(), IsEmpty());
}

} // namespace
} // namespace zelvatone
