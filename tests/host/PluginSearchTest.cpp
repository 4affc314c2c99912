#include "host/plugin/PluginSearch.h"

#include "host/Error.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using Path = std::filesystem::path;

TEST(PluginSearch, LooksBesideTheProgramFirstAndInTheSystemLast) {
    EXPECT_THAT(pluginFolders({"/opt/z/bin", "/one::/two", "/home/me"}),
                ElementsAre(Path("/opt/z/bin"), Path("/opt/z/lib/vst"), Path("/one"), Path("/two"),
                            Path("/home/me/.vst"), Path("/usr/local/lib/vst"),
                            Path("/usr/lib/vst")));
}

TEST(PluginSearch, SkipsFoldersThatTheEnvironmentDoesNotName) {
    EXPECT_THAT(pluginFolders({"", "", ""}),
                ElementsAre(Path("/usr/local/lib/vst"), Path("/usr/lib/vst")));
}

TEST(PluginSearch, TakesTheFirstThatIsThere) {
    const TemporaryFolder first;
    const TemporaryFolder second;
    const TemporaryFolder third;
    writeText(second / "zelvatone.so", "");
    writeText(third / "zelvatone.so", "");
    EXPECT_EQ(findPlugin({first.path(), "/no/such", second.path(), third.path()}),
              second / "zelvatone.so");
}

TEST(PluginSearch, SaysWhereItLooked) {
    try {
        findPlugin({"/no/such", "/nor/this"});
        FAIL() << "found";
    } catch (const InputError& error) {
        EXPECT_STREQ(error.what(), "zelvatone.so not found in /no/such, /nor/this; name it with "
                                   "--plugin");
    }
}

} // namespace
} // namespace zelvatone
