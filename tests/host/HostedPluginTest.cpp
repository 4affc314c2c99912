#include "host/plugin/HostedPlugin.h"

#include "host/Error.h"
#include "tests/support/Program.h"
#include "tests/support/plugins/PulseLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

PulseLog& logOf(HostedPlugin& plugin) {
    return *reinterpret_cast<PulseLog*>(plugin.request(effVendorSpecific, kPulseLogRequest));
}

std::string refusal(const std::string& path) {
    try {
        const PluginLibrary library(path);
        const HostedPlugin plugin(library, StreamFormat{});
    } catch (const InputError& error) {
        return error.what();
    }
    return "loaded";
}

TEST(HostedPlugin, ServesThePlugInInsideItsEntryPoint) {
    const PluginLibrary library(testPlugin("pulse"));
    HostedPlugin plugin(library, {22050.0, 77});
    EXPECT_EQ(logOf(plugin).versionBeforeRecord, 2400);
    EXPECT_EQ(logOf(plugin).rateInConstruction, 22050);
    EXPECT_EQ(logOf(plugin).timeFlagsInConstruction, 0); // nothing plays yet
}

TEST(HostedPlugin, OpensThenSetsTheFormatThenSwitchesOn) {
    const PluginLibrary library(testPlugin("pulse"));
    HostedPlugin plugin(library, {48000.0, 256});
    plugin.switchOn();
    plugin.switchOff();
    EXPECT_THAT(logOf(plugin).requests,
                ElementsAre("open", "rate 48000", "block 256", "on", "off"));
}

TEST(HostedPlugin, KeepsTwoInstancesApart) {
    const PluginLibrary library(testPlugin("pulse"));
    HostedPlugin first(library, StreamFormat{});
    HostedPlugin second(library, {96000.0, 64});
    first.setParameter(0, 0.25F);
    EXPECT_FLOAT_EQ(first.parameter(0), 0.25F);
    EXPECT_FLOAT_EQ(second.parameter(0), 1.0F);
    EXPECT_EQ(logOf(second).rateInConstruction, 96000);
}

TEST(HostedPlugin, StartsThroughTheOlderEntryPoint) {
    EXPECT_EQ(refusal(testPlugin("oldentry")), "loaded");
}

TEST(HostedPlugin, SaysWhyAFileIsNotAPlugIn) {
    EXPECT_THAT(refusal("/no/such.so"), HasSubstr("no such plug-in"));
    EXPECT_THAT(refusal(TEST_PLUGINS "../CTestTestfile.cmake"),
                HasSubstr("is not a plug-in: invalid ELF header"));
    EXPECT_THAT(refusal(testPlugin("noentry")), HasSubstr("no entry point"));
    EXPECT_THAT(refusal(testPlugin("refusing")), HasSubstr("refuses to start"));
    EXPECT_THAT(refusal(testPlugin("unmarked")), HasSubstr("lacks the interface's mark"));
}

} // namespace
} // namespace zelvatone
