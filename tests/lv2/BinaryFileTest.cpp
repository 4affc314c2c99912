// The bundle's binaries from outside: what they export, and what they need.
#include "tests/lv2/Lv2Bundle.h"
#include "tests/plugin/ToolOutput.h"

#include <gmock/gmock.h>

namespace zelvatone::test {
namespace {

using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;

std::vector<std::string> exportsOf(const std::string& file) {
    return lastWords(
        outputOf(ZELVATONE_NM " --dynamic --defined-only " + Lv2Bundle::folder() + file), " ");
}

TEST(Lv2BinaryFile, ExportsItsOneFunctionAndNothingElse) {
    EXPECT_THAT(exportsOf("zelvatone.so"), ElementsAre("lv2_descriptor"));
    EXPECT_THAT(exportsOf("zelvatone_editor.so"), ElementsAre("lv2ui_descriptor"));
}

TEST(Lv2BinaryFile, NeedsNothingThatDrawsForTheSound) {
    if (ZELVATONE_SANITIZED) {
        GTEST_SKIP() << "the sanitizers' runtimes come along";
    }
    const std::string header =
        outputOf(ZELVATONE_READELF " --wide --dynamic " + Lv2Bundle::folder() + "zelvatone.so");
    EXPECT_THAT(lastWords(header, "(NEEDED)"),
                Each(AnyOf("[libm.so.6]", "[libc.so.6]", "[ld-linux-x86-64.so.2]")))
        << header;
    EXPECT_FALSE(lastWords(header, "(NEEDED)").empty()) << header;
}

} // namespace
} // namespace zelvatone::test
