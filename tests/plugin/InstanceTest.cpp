// Several instances of the linked library in one process.
#include "tests/plugin/FreeWatch.h"
#include "tests/plugin/LoadedPlugin.h"

#include <cstddef>
#include <vector>

namespace {

constexpr VstInt32 kFrames = 2000;
constexpr VstInt32 kAttack = 18;
constexpr VstInt32 kCrush = 14;

class Instances : public ::testing::Test {
protected:
    RecordingHost host;
    LoadedPlugin one;
    LoadedPlugin two;
};

TEST_F(Instances, HaveRecordsAndObjectsOfTheirOwn) {
    EXPECT_NE(one.record, two.record);
    EXPECT_NE(one.record->object, two.record->object);
}

TEST_F(Instances, ShareNoParameters) {
    const float before = two.getParameter(kAttack);
    one.setParameter(kAttack, 1.0F);
    EXPECT_EQ(two.getParameter(kAttack), before);
}

TEST_F(Instances, ShareNoProgramsAndNoNames) {
    const VstInt32 last = one.record->numPrograms - 1;
    one.ask(effSetProgram, 0, last);
    char name[] = "Mine";
    one.ask(effSetProgramName, 0, 0, name);

    EXPECT_EQ(two.ask(effGetProgram), 0);
    two.ask(effSetProgram, 0, last);
    EXPECT_NE(two.text(effGetProgramName), "Mine");
}

TEST_F(Instances, ShareNoNotes) {
    one.send({kNoteOn});
    one.render(100);
    EXPECT_EQ(two.render(kFrames).peak(), 0.0F);
    EXPECT_GT(one.render(kFrames).peak(), 0.0F);
}

TEST_F(Instances, ShareNoSettingsWhileTheySound) {
    one.send({kNoteOn});
    const StereoBlock alone = one.render(kFrames);

    const LoadedPlugin again;
    two.ask(effSetSampleRate, 0, 0, nullptr, 8000.0F);
    two.setParameter(kCrush, 1.0F); // another wave table
    two.send({{0xE0, 0, 0}, {0x90, 40, 100}});
    again.send({kNoteOn});
    two.render(10);
    EXPECT_TRUE(again.render(kFrames) == alone);
}

TEST_F(Instances, TellTheHostWhichOfThemAsks) {
    host.calls.clear();
    two.ask(effMainsChanged, 0, 1);
    one.render(16);

    ASSERT_EQ(host.calls.size(), 2U);
    EXPECT_EQ(host.calls[0].effect, two.record);
    EXPECT_EQ(host.calls[1].effect, one.record);
}

TEST_F(Instances, OutliveOneAnother) {
    one.send({kNoteOn});
    two.send({kNoteOn});
    two.render(kFrames);
    EXPECT_EQ(two.close(), 1);

    const LoadedPlugin third;
    third.send({kNoteOn});
    EXPECT_TRUE(one.render(kFrames) == third.render(kFrames));
}

TEST_F(Instances, GiveTheirObjectsBackWhenClosedAndNotBefore) {
    if (ZELVATONE_SANITIZED) {
        GTEST_SKIP() << "the heap is the sanitizer's";
    }
    constexpr std::size_t kInstances = 50;
    std::vector<HostedEffect> instances;
    for (std::size_t i = 0; i < kInstances; ++i) {
        instances.emplace_back(PluginLibrary::get().entry()(RecordingHost::callback));
        watchForFree(instances.back().record); // which lies inside the object
    }
    EXPECT_EQ(freedOfWatched(), 0U);
    for (const HostedEffect& instance : instances) {
        instance.ask(effClose);
    }
    EXPECT_EQ(freedOfWatched(), kInstances);
}

TEST_F(Instances, MayBeClosedWithEventsWaitingAndNotesSounding) {
    one.send({kNoteOn, {0x90, 50, 100, 1000000}});
    one.render(100);
    EXPECT_EQ(one.close(), 1);
}

} // namespace
