#include "host/files/MemoryFile.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>

namespace zelvatone {
namespace {

std::string textOf(const MemoryFile& file) {
    return {file.bytes().begin(), file.bytes().end()};
}

TEST(MemoryFile, WritesOverAndAppends) {
    MemoryFile file;
    file.write("abcd", 4);
    EXPECT_EQ(file.seek(-2, SEEK_END), 2);
    file.write("XYZ", 3);
    EXPECT_EQ(textOf(file), "abXYZ");
    EXPECT_EQ(file.size(), 5);
}

TEST(MemoryFile, FillsAGapWithZeros) {
    MemoryFile file;
    file.seek(2, SEEK_SET);
    file.write("c", 1);
    EXPECT_EQ(textOf(file), std::string("\0\0c", 3));
}

TEST(MemoryFile, ReadsToItsEndOnly) {
    MemoryFile file;
    file.write("abc", 3);
    file.seek(-2, SEEK_CUR);
    std::array<char, 8> target{};
    EXPECT_EQ(file.read(target.data(), 8), 2);
    EXPECT_STREQ(target.data(), "bc");
    EXPECT_EQ(file.read(target.data(), 8), 0);
    file.seek(10, SEEK_SET);
    EXPECT_EQ(file.read(target.data(), 8), 0);
}

TEST(MemoryFile, RefusesAPlaceBeforeItsStart) {
    MemoryFile file;
    file.write("abc", 3);
    EXPECT_EQ(file.seek(-4, SEEK_END), -1);
    EXPECT_EQ(file.seek(0, SEEK_CUR), 3);
}

} // namespace
} // namespace zelvatone
