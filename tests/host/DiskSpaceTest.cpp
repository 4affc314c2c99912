#include "host/files/DiskSpace.h"

#include "host/Error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using ::testing::HasSubstr;

// /small has 100 MB free, everything else 1000 MB of another disk.
std::filesystem::space_info spaceOf(const std::filesystem::path& folder) {
    return folder == "/small" ? std::filesystem::space_info{500000000, 100000000, 100000000}
                              : std::filesystem::space_info{5000000000, 1000000000, 1000000000};
}

std::string refusalOf(const std::vector<DiskDemand>& demands) {
    try {
        checkDiskSpace(demands, spaceOf);
    } catch (const InputError& error) {
        return error.what();
    }
    return "accepted";
}

TEST(DiskSpace, FileThatFillsTheDiskIsAccepted) {
    EXPECT_EQ(refusalOf({{"/small/a.wav", 100000000}, {"/big/b.wav", 1000000000}}), "accepted");
}

TEST(DiskSpace, FilesOfOneDiskAreAddedUp) {
    EXPECT_EQ(refusalOf({{"/small/a.wav", 60000000}, {"/small/b.wav", 60000000}}),
              "cannot write /small/b.wav: 120 MB are needed, 100 MB are free");
}

TEST(DiskSpace, FileNamedWithoutItsFolderLiesInThisOne) {
    EXPECT_THAT(refusalOf({{"a.wav", 2000000000}}), HasSubstr("1000 MB are free"));
}

TEST(DiskSpace, DiskThatDoesNotSayWhatIsFreeIsLargeEnough) {
    EXPECT_NO_THROW(checkDiskSpace({{"/no/such/folder/a.wav", 1LL << 60U}}));
}

} // namespace
} // namespace zelvatone
