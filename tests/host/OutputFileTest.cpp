#include "host/files/OutputFile.h"

#include "host/Error.h"
#include "tests/support/TemporaryFolder.h"

#include <sys/resource.h>
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
        EXPECT_EQ(folder.names().size(), 1U);
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
