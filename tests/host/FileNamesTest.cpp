#include "host/text/FileNames.h"

#include <gtest/gtest.h>

namespace zelvatone {
namespace {

TEST(FileName, KeepsLettersAndDigits) {
    EXPECT_EQ(fileName("02", "Organ"), "02-Organ");
    EXPECT_EQ(fileName("rest", "8bit"), "rest-8bit");
    EXPECT_EQ(fileName("3", "Näyte Ⅱ"), "3-Näyte-Ⅱ");
}

// Slash and colon part folders, the marks and the asterisk are no part of a name on Windows; hash,
// question mark and percent have a meaning in addresses; the space is what people write by hand.
TEST(FileName, HasOneHyphenForWhatSomeSystemDoesNotTake) {
    EXPECT_EQ(fileName("16", "Pots and Pans in Orbit"), "16-Pots-and-Pans-in-Orbit");
    EXPECT_EQ(fileName("3", "Up/Down"), "3-Up-Down");
    EXPECT_EQ(fileName("3", "a\\b:c*d?e\"f<g>h|i#j%k&l"), "3-a-b-c-d-e-f-g-h-i-j-k-l");
    EXPECT_EQ(fileName("3", "a /-\n b"), "3-a-b");
}

TEST(FileName, HasNoHyphenAtAnEnd) {
    EXPECT_EQ(fileName("7", "  <Organ> ..."), "7-Organ");
    EXPECT_EQ(fileName("03", ""), "03");
    EXPECT_EQ(fileName("0", "..//"), "0");
}

} // namespace
} // namespace zelvatone
