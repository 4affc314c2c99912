// A program's name: what is kept of a text, and what a reader sees while another thread writes.
#include "params/ProgramName.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <string>
#include <thread>

namespace zelvatone {
namespace {

TEST(ProgramName, KeepsATextOfUpTo63Characters) {
    for (std::size_t length = 0; length <= 63; ++length) {
        const std::string text(length, 'x');
        EXPECT_EQ(ProgramName(text).text(), text);
    }
}

TEST(ProgramName, CutsALongerOneAfter63Characters) {
    EXPECT_EQ(ProgramName(std::string(64, 'x')).text(), std::string(63, 'x'));
    EXPECT_EQ(ProgramName(std::string(1000, 'x')).text(), std::string(63, 'x'));
}

TEST(ProgramName, EndsAtTheFirstZero) {
    EXPECT_EQ(ProgramName(std::string_view("ab\0cd", 5)).text(), "ab");
}

TEST(ProgramName, LeavesNothingOfALongerNameBehind) {
    ProgramName name("a name of more than eight characters");
    name = "short";
    EXPECT_EQ(name.text(), "short");
    EXPECT_EQ(name, ProgramName("short"));
    EXPECT_FALSE(name == "shorter");
}

TEST(ProgramName, IsCopiedByValue) {
    ProgramName name("first");
    const ProgramName copy(name);
    name = "second";
    EXPECT_EQ(copy, "first");
    name = copy;
    EXPECT_EQ(name, "first");
    const ProgramName& itself = name;
    name = itself;
    EXPECT_EQ(name, "first");
}

// Each of the two names is of one letter, so what a reader may see is one or two stretches of them.
TEST(ProgramName, ReadsAsPartsOfTheOldAndTheNewOneWhileItIsSet) {
    const std::array<std::string, 2> names = {std::string(63, 'a'), std::string(20, 'b')};
    ProgramName name(names[0]);
    std::atomic<bool> isDone = false;
    std::thread writer([&] {
        for (std::size_t i = 1; !isDone; ++i) {
            name = names[i % 2];
        }
    });
    for (int i = 0; i < 20000; ++i) {
        const std::string seen = name.text();
        ASSERT_LE(seen.size(), 63U);
        ASSERT_GE(seen.size(), 16U); // two words of eight are full in both names
        ASSERT_EQ(seen.find_first_not_of("ab"), std::string::npos) << seen;
    }
    isDone = true;
    writer.join();
}

} // namespace
} // namespace zelvatone
