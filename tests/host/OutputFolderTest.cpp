#include "host/files/OutputFolder.h"

#include "host/Error.h"
#include "tests/support/TemporaryFolder.h"

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

bool never(const std::filesystem::path& /*folder*/) {
    return false;
}

bool always(const std::filesystem::path& /*folder*/) {
    return true;
}

class OutputFolderTest : public ::testing::Test {
protected:
    std::string errorOf(const std::filesystem::path& path) const {
        try {
            const OutputFolder folder(path, never);
        } catch (const InputError& error) {
            return error.what();
        }
        return "no error";
    }

    const TemporaryFolder scratch_;
    const std::filesystem::path target_ = scratch_ / "out";
};

TEST_F(OutputFolderTest, AppearsWhenItIsCommitted) {
    {
        OutputFolder folder(target_, never);
        writeText(folder.hidden() / "a", "text");
        EXPECT_FALSE(std::filesystem::exists(target_));
        folder.commit();
        EXPECT_EQ(readText(target_ / "a"), "text");
    }
    EXPECT_THAT(scratch_.names(), ElementsAre("out"));
}

TEST_F(OutputFolderTest, LeavesNothingWithoutACommit) {
    {
        const OutputFolder folder(target_, never);
        writeText(folder.hidden() / "a", "text");
    }
    EXPECT_THAT(scratch_.names(), IsEmpty());
}

TEST_F(OutputFolderTest, ReplacesAnEmptyFolderAndItsOwn) {
    std::filesystem::create_directory(target_);
    for (const char* text : {"first", "second"}) {
        OutputFolder folder(target_ / "", always); // with a slash at its end
        writeText(folder.hidden() / text, text);
        folder.commit();
        EXPECT_EQ(readText(target_ / text), text);
    }
    EXPECT_FALSE(std::filesystem::exists(target_ / "first"));
    EXPECT_THAT(scratch_.names(), ElementsAre("out"));
}

TEST_F(OutputFolderTest, RefusesAFolderWithOtherFilesInIt) {
    std::filesystem::create_directory(target_);
    writeText(target_ / "letter", "dear");
    EXPECT_THAT(errorOf(target_), HasSubstr("out: there are other files in it"));
    EXPECT_EQ(readText(target_ / "letter"), "dear");
    EXPECT_THAT(errorOf(target_ / "letter"), HasSubstr("letter: it is no folder"));
    EXPECT_THAT(errorOf(scratch_ / "no" / "out"), HasSubstr("No such file or directory"));
}

TEST_F(OutputFolderTest, IsRemovedByTheNextOneWhenItsProcessIsKilled) {
    const pid_t child = fork();
    if (child == 0) {
        const OutputFolder folder(target_, never);
        writeText(folder.hidden() / "a", "text");
        raise(SIGKILL);
    }
    waitpid(child, nullptr, 0);
    EXPECT_EQ(scratch_.names().size(), 1U);
    OutputFolder(target_, never).commit();
    EXPECT_THAT(scratch_.names(), ElementsAre("out"));
}

TEST_F(OutputFolderTest, FollowsALink) {
    std::filesystem::create_directory(target_);
    std::filesystem::create_symlink("out", scratch_ / "link");
    OutputFolder folder(scratch_ / "link", never);
    writeText(folder.hidden() / "a", "text");
    folder.commit();
    EXPECT_EQ(readText(target_ / "a"), "text");
    EXPECT_TRUE(std::filesystem::is_symlink(scratch_ / "link"));
}

} // namespace
} // namespace zelvatone
