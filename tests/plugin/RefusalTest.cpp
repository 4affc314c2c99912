// A host that reports no version gets nothing, and nothing is made for it: an engine, which stays
// in memory as long as the library, would be lost.
#include "tests/plugin/CallWatch.h"
#include "tests/plugin/LoadedPlugin.h"
#include "tests/plugin/PlainHost.h"

namespace {

VstIntPtr hostWithoutVersion(AEffect*, VstInt32, VstInt32, VstIntPtr, void*, float) {
    return 0;
}

CallCounts duringEntryFor(audioMasterCallback host) {
    const PluginLibrary::Entry entry = PluginLibrary::get().entry();
    const CallCounts before = callCounts();
    AEffect* const record = entry(host);
    const CallCounts counts = callCounts().since(before);
    if (record != nullptr) {
        HostedEffect(record).ask(effClose);
    }
    return counts;
}

TEST(Refusal, AllocatesNothing) {
    EXPECT_EQ(duringEntryFor(nullptr).allocations, 0U);
    EXPECT_EQ(duringEntryFor(hostWithoutVersion).allocations, 0U);
}

TEST(Refusal, IsToldFromAnInstanceByItsAllocations) {
    EXPECT_GT(duringEntryFor(plainHostCallback).allocations, 0U);
}

} // namespace
