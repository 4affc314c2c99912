#include "tests/plugin/LoadedPlugin.h"

#include <cstddef>
#include <cstring>

namespace {

constexpr VstInt32 kUniqueID = 0x0000F06A; // 61546
constexpr VstInt32 kParameters = 23;

TEST(EntryPoint, RefusesAHostWithoutACallback) {
    EXPECT_EQ(PluginLibrary::get().entry()(nullptr), nullptr);
}

TEST(EntryPoint, AsksTheHostForItsVersionFirst) {
    RecordingHost host;
    const LoadedPlugin plugin;

    ASSERT_FALSE(host.calls.empty());
    const HostCall& call = host.calls.front();
    EXPECT_EQ(call.effect, nullptr);
    EXPECT_EQ(call.opcode, 1);
    EXPECT_EQ(call.index, 0);
    EXPECT_EQ(call.value, 0);
    EXPECT_EQ(call.ptr, nullptr);
    EXPECT_EQ(call.opt, 0.0F);
    EXPECT_EQ(host.callsOf(audioMasterVersion).size(), 1U);
}

TEST(EntryPoint, RefusesAHostWithoutAVersionAndAsksNothingMore) {
    RecordingHost host;
    host.results[audioMasterVersion] = 0;

    EXPECT_EQ(PluginLibrary::get().entry()(RecordingHost::callback), nullptr);
    EXPECT_EQ(host.calls.size(), 1U);
}

TEST(EntryPoint, AcceptsAnyVersionButZero) {
    RecordingHost host;
    for (const VstIntPtr version : {1, 2, 2300, -1}) {
        host.results[audioMasterVersion] = version;
        const LoadedPlugin plugin;
        EXPECT_NE(plugin.record, nullptr) << version;
    }
}

TEST(EntryPoint, IsOneFunctionUnderTwoNames) {
    const PluginLibrary& library = PluginLibrary::get();

    ASSERT_NE(library.entry("VSTPluginMain"), nullptr);
    EXPECT_EQ(library.entry("main"), library.entry("VSTPluginMain"));
}

using EffectRecord = LoadedPluginTest;

TEST_F(EffectRecord, IdentifiesThePlugin) {
    EXPECT_EQ(std::memcmp(&plugin.record->magic, "PtsV", 4), 0); // 'VstP', lowest byte first
    EXPECT_EQ(plugin.record->uniqueID, kUniqueID);
    EXPECT_EQ(plugin.record->version, 1);
}

TEST_F(EffectRecord, CountsProgramsParametersAndChannels) {
    EXPECT_GE(plugin.record->numPrograms, 1);
    EXPECT_EQ(plugin.record->numParams, kParameters);
    EXPECT_EQ(plugin.record->numInputs, 0);
    EXPECT_EQ(plugin.record->numOutputs, 2);
}

TEST_F(EffectRecord, IsFlaggedAsAReplacingSynthWithoutChunksOrDoublePrecision) {
    EXPECT_EQ(plugin.record->flags, 0x1 | 0x10 | 0x100); // editor, replacing, synth
}

TEST_F(EffectRecord, AddsNoDelayAndKeepsTheRate) {
    EXPECT_EQ(plugin.record->initialDelay, 0);
    EXPECT_EQ(plugin.record->ioRatio, 1.0F);
}

TEST_F(EffectRecord, HasAllEntriesAndItsObject) {
    EXPECT_NE(plugin.record->dispatcher, nullptr);
    EXPECT_NE(plugin.record->process, nullptr);
    EXPECT_NE(plugin.record->setParameter, nullptr);
    EXPECT_NE(plugin.record->getParameter, nullptr);
    EXPECT_NE(plugin.record->processReplacing, nullptr);
    EXPECT_NE(plugin.record->processDoubleReplacing, nullptr);
    EXPECT_NE(plugin.record->object, nullptr);
}

TEST_F(EffectRecord, LeavesTheHostsPlacesAndTheReservedBytesZero) {
    EXPECT_EQ(plugin.record->resvd1, 0);
    EXPECT_EQ(plugin.record->resvd2, 0);
    EXPECT_EQ(plugin.record->user, nullptr);
    for (const char byte : plugin.record->future) {
        EXPECT_EQ(byte, 0);
    }
}

} // namespace
