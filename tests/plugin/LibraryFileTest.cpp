#include "tests/plugin/LoadedPlugin.h"
#include "tests/plugin/ToolOutput.h"

#include <gmock/gmock.h>

#include <iostream>
#include <string>

namespace {

using testing::AnyOf;
using testing::Each;
using testing::UnorderedElementsAre;

TEST(LibraryFile, ExportsTheEntryPointUnderItsTwoNamesAndNothingElse) {
    const std::string symbols =
        outputOf(std::string(ZELVATONE_NM " --dynamic --defined-only ") + PluginLibrary::path());

    EXPECT_THAT(lastWords(symbols, " "), UnorderedElementsAre("VSTPluginMain", "main")) << symbols;
}

TEST(LibraryFile, NeedsNothingThatADesktopMightLack) {
    if (ZELVATONE_SANITIZED) {
        GTEST_SKIP() << "the sanitizers' runtimes come along";
    }
    const std::string header =
        outputOf(std::string(ZELVATONE_READELF " --wide --dynamic ") + PluginLibrary::path());

    EXPECT_THAT(
        lastWords(header, "(NEEDED)"),
        Each(AnyOf("[libm.so.6]", "[libc.so.6]", "[ld-linux-x86-64.so.2]",
                   // What the editor draws with, as do the programs of a desktop.
                   "[libxcb.so.1]", "[libcairo.so.2]", "[libpango-1.0.so.0]",
                   "[libpangocairo-1.0.so.0]", "[libgobject-2.0.so.0]", "[libglib-2.0.so.0]")))
        << header;
    EXPECT_FALSE(lastWords(header, "(NEEDED)").empty()) << header;
}

TEST(LibraryFile, LoadsWithAllSymbolsResolvedAtOnce) {
    const PluginLibrary& library = PluginLibrary::get();

    // For the reader, not for judgement: the machine may be busy with something else.
    std::cout << "[   NOTE   ] loaded in " << library.loadMilliseconds() << " ms\n";
    EXPECT_NE(library.entry(), nullptr);
}

} // namespace
