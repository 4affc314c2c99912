#include "vstguieditor/EmbeddedPictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace zelvatone::test {
namespace {

class EmbeddedPicture : public testing::TestWithParam<const char*> {};

TEST_P(EmbeddedPicture, IsTheFileWhateverTheCaseOfItsName) {
    const std::string file = GetParam();
    std::ifstream stream(ZELVATONE_RESOURCES "/" + file, std::ios::binary);
    const std::vector<char> bytes(std::istreambuf_iterator<char>(stream), {});
    ASSERT_GT(bytes.size(), 1000U);
    std::string lower = file;
    std::ranges::transform(lower, lower.begin(), [](unsigned char c) { return std::tolower(c); });
    for (const std::string& name : {file, lower}) {
        const auto embedded = embeddedPicture(name);
        EXPECT_TRUE(std::ranges::equal(embedded, bytes, [](std::uint8_t a, char b) {
            return a == static_cast<std::uint8_t>(b);
        })) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Of, EmbeddedPicture,
                         testing::Values("ANIMKNOB.PNG", "BACKGROUND.PNG", "HELPOVERLAY.PNG",
                                         "HELP1.PNG", "HELP2.PNG", "HELP3.PNG", "HELP4.PNG",
                                         "HELP5.PNG"));

TEST(EmbeddedPictures, HaveNothingUnderOtherNames) {
    for (const char* name : {"", "help6.png", "help1.pn", "help1.png2", "animknob"}) {
        EXPECT_TRUE(embeddedPicture(name).empty()) << name;
    }
}

} // namespace
} // namespace zelvatone::test
