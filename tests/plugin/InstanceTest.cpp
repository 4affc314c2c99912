// Several instances of the linked library in one process.
#include "plugin/LoadedPlugin.h"

#include <cstddef>

#include <malloc.h>

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

// How much 50 instances leave on the heap once `end` was done to each.
template<class End>
std::size_t heapLeftBy50(End end) {
    const std::size_t before = mallinfo2().uordblks;
    for (int i = 0; i < 50; ++i) {
        end(HostedEffect(PluginLibrary::get().entry()(RecordingHost::callback)));
    }
    return mallinfo2().uordblks - before;
}

TEST_F(Instances, GiveTheirObjectsBackWhenClosed) {
    if (ZELVATONE_SANITIZED) {
        GTEST_SKIP() << "the heap is the sanitizer's";
    }
    host.calls.reserve(1000);
    const std::size_t leftByClosed =
        heapLeftBy50([](HostedEffect effect) { effect.ask(effClose); });
    const std::size_t leftByOpen = heapLeftBy50([](HostedEffect) {});

    // The engines stay either way. An object is larger than the record inside it; the allocator
    // may hold a few freed ones back.
    EXPECT_GT(leftByClosed, 0U);
    EXPECT_GT(leftByOpen, leftByClosed + 40 * sizeof(AEffect));
}

TEST_F(Instances, MayBeClosedWithEventsWaitingAndNotesSounding) {
    one.send({kNoteOn, {0x90, 50, 100, 1000000}});
    one.render(100);
    EXPECT_EQ(one.close(), 1);
}

} // namespace
