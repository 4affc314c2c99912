#include "dataset/TarArchive.h"

#include "host/Error.h"
#include "host/files/MemoryFile.h"
#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

std::string smallTar() {
    MemoryFile file;
    Sha256 sum;
    TarWriter tar(file, sum);
    tar.add("000000.wav", std::string(600, 'w'));
    tar.add("000000.json", std::string("{}"));
    tar.finish();
    std::string bytes(file.bytes().begin(), file.bytes().end());
    Sha256 whole;
    whole.add(bytes);
    EXPECT_EQ(sum.take(), whole.take());
    return bytes;
}

// A header of 512 bytes and the content in blocks of 512 for each file, and two blocks of zeros.
TEST(TarArchive, HasNothingButItsFiles) {
    const std::string bytes = smallTar();
    EXPECT_EQ(bytes.size(), 512U * (1 + 2 + 1 + 1 + 2));
    EXPECT_EQ(bytes.substr(0, 11), std::string("000000.wav\0", 11));
    EXPECT_EQ(bytes.substr(136, 11), "00000000000") << "a time";
    EXPECT_EQ(bytes.substr(257, 5), "ustar");
    EXPECT_EQ(bytes.substr(512, 600), std::string(600, 'w'));
}

TEST(TarArchive, IsTheSameEachTime) {
    EXPECT_EQ(smallTar(), smallTar());
}

TEST(TarArchive, ReadsBack) {
    const TemporaryFolder folder;
    writeText(folder / "a.tar", smallTar());
    std::vector<std::pair<std::string, std::size_t>> files;
    readTar(folder / "a.tar", [&](const std::string& name, std::span<const char> bytes) {
        files.emplace_back(name, bytes.size());
    });
    EXPECT_THAT(files, ElementsAre(Pair("000000.wav", 600U), Pair("000000.json", 2U)));
}

TEST(TarArchive, SystemsOwnProgramLists) {
    const TemporaryFolder folder;
    writeText(folder / "a.tar", smallTar());
    const auto result = shellWith("tar tf \"$1\"", {(folder / "a.tar").string()});
    EXPECT_EQ(result.output, "000000.wav\n000000.json\n");
    EXPECT_EQ(result.errors, "");
}

TEST(TarArchive, CutOffIsRefused) {
    const TemporaryFolder folder;
    const auto ignore = [](const std::string&, std::span<const char>) {};
    writeText(folder / "a.tar", smallTar().substr(0, 800));
    EXPECT_THROW(readTar(folder / "a.tar", ignore), InputError);
    writeText(folder / "b.tar", std::string(2000, 'x'));
    EXPECT_THROW(readTar(folder / "b.tar", ignore), InputError);
    EXPECT_THROW(readTar(folder / "missing.tar", ignore), InputError);
}

} // namespace
} // namespace zelvatone
