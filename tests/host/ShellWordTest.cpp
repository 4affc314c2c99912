#include "host/text/ShellWord.h"

#include <gtest/gtest.h>

namespace zelvatone {
namespace {

TEST(ShellWord, IsQuotedWhereTheShellWouldReadIt) {
    EXPECT_EQ(shellWord("Organ"), "Organ");
    EXPECT_EQ(shellWord("Cyborg Pad"), "'Cyborg Pad'");
    EXPECT_EQ(shellWord("it's $HOME"), "'it'\\''s $HOME'");
    EXPECT_EQ(shellWord(""), "''");
}

} // namespace
} // namespace zelvatone
