#include "vstguieditor/EmbeddedPictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <vector>

namespace zelvatone::test {
namespace {

class EmbeddedPicture : public testing::TestWithParam<const char*> {};

bool isFile(std::span<const std::uint8_t> embedded, const std::string& file) {
    std::ifstream stream(ZELVATONE_RESOURCES "/" + file, std::ios::binary);
    const std::vector<char> bytes(std::istreambuf_iterator<char>(stream), {});
    return bytes.size() > 1000 && std::ranges::equal(embedded, bytes, [](std::uint8_t a, char b) {
               return a == static_cast<std::uint8_t>(b);
           });
}

TEST_P(EmbeddedPicture, IsTheFileWhateverTheCaseOfItsName) {
    const std::string file = GetParam();
    std::string lower = file;
    std::ranges::transform(lower, lower.begin(), [](unsigned char c) { return std::tolower(c); });
    for (const std::string& name : {file, lower}) {
        EXPECT_TRUE(isFile(embeddedPicture(name), file)) << name;
        EXPECT_TRUE(isFile(embeddedDoublePicture(name), "2x/" + file)) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Of, EmbeddedPicture,
                         testing::Values("ANIMKNOB.PNG", "BACKGROUND.PNG", "HELPOVERLAY.PNG",
                                         "HELP1.PNG", "HELP2.PNG", "HELP3.PNG", "HELP4.PNG",
                                         "HELP5.PNG"));

TEST(EmbeddedPictures, HaveNothingUnderOtherNames) {
    for (const char* name : {"", "help6.png", "help1.pn", "help1.png2", "animknob"}) {
        EXPECT_TRUE(embeddedPicture(name).empty()) << name;
        EXPECT_TRUE(embeddedDoublePicture(name).empty()) << name;
    }
}

} // namespace
} // namespace zelvatone::test
