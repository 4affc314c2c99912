// Program requests to the linked library, whatever number of programs its bank holds. A bank of a
// known size is in ShellProgramTest.cpp.
#include "tests/plugin/GuardedText.h"
#include "tests/plugin/LoadedPlugin.h"

#include <climits>
#include <csignal>
#include <string>

namespace {

constexpr VstInt32 kAttack = 18;

class ProgramRequest : public LoadedPluginTest {
protected:
    VstInt32 count() const { return plugin.record->numPrograms; }
    void select(VstInt32 index) { EXPECT_EQ(plugin.ask(effSetProgram, 0, index), 0); }
    VstIntPtr current() { return plugin.ask(effGetProgram); }
    void rename(const std::string& name) {
        std::string buffer = name;
        EXPECT_EQ(plugin.ask(effSetProgramName, 0, 0, buffer.data()), 0);
    }
    std::string name() { return plugin.text(effGetProgramName); }
};

TEST_F(ProgramRequest, FindsDefaultSelectedAtTheStart) {
    EXPECT_EQ(current(), 0);
    EXPECT_EQ(name(), "Default");
}

TEST_F(ProgramRequest, SelectsEachProgramOfTheBank) {
    for (VstInt32 index = count() - 1; index >= 0; --index) {
        select(index);
        EXPECT_EQ(current(), index);
        GuardedText indexed;
        EXPECT_EQ(plugin.ask(effGetProgramNameIndexed, index, 0, indexed.data()), 1);
        EXPECT_EQ(indexed.text(), name());
    }
}

TEST_F(ProgramRequest, SelectsNothingOutsideTheBank) {
    const VstInt32 last = count() - 1;
    select(last);
    for (const VstIntPtr index :
         {VstIntPtr{count()}, VstIntPtr{count()} + 1, VstIntPtr{INT_MAX}, VstIntPtr{-1},
          VstIntPtr{INT_MIN}, VstIntPtr{1} << 32, -(VstIntPtr{1} << 32)}) {
        EXPECT_EQ(plugin.ask(effSetProgram, 0, index), 0) << index;
        EXPECT_EQ(current(), last) << index;
    }
}

TEST_F(ProgramRequest, KeepsEachProgramsOwnParameters) {
    const float before = plugin.getParameter(kAttack);
    for (VstInt32 index = 1; index < count(); ++index) {
        select(index);
        plugin.setParameter(kAttack, 1.0F);
    }
    select(0);
    EXPECT_EQ(plugin.getParameter(kAttack), before);
    for (VstInt32 index = 1; index < count(); ++index) {
        select(index);
        EXPECT_EQ(plugin.getParameter(kAttack), 1.0F) << index;
    }
}

TEST_F(ProgramRequest, RenamesTheCurrentProgramAlone) {
    const VstInt32 last = count() - 1;
    select(last);
    rename("Mine");

    EXPECT_EQ(name(), "Mine");
    GuardedText indexed;
    plugin.ask(effGetProgramNameIndexed, last, 0, indexed.data());
    EXPECT_EQ(indexed.text(), "Mine");
    if (last > 0) {
        select(0);
        EXPECT_EQ(name(), "Default");
    }
}

TEST_F(ProgramRequest, CutsANewNameAfter24Characters) {
    rename("abcdefghijklmnopqrstuvwxyz0123");
    EXPECT_EQ(name(), "abcdefghijklmnopqrstuvwx");
}

TEST_F(ProgramRequest, KeepsANewNameOf24CharactersWhole) {
    rename("abcdefghijklmnopqrstuvwx");
    EXPECT_EQ(name(), "abcdefghijklmnopqrstuvwx");
}

TEST_F(ProgramRequest, AcceptsAnEmptyName) {
    rename("");
    EXPECT_EQ(name(), "");
}

TEST_F(ProgramRequest, ReadsNoMoreThan24CharactersOfANewName) {
    char name24[24]; // fills its 24 places and has no terminator
    std::fill(std::begin(name24), std::end(name24), 'x');
    plugin.ask(effSetProgramName, 0, 0, name24);

    EXPECT_EQ(name(), std::string(24, 'x'));
}

TEST_F(ProgramRequest, Writes24CharactersOfANameAndATerminator) {
    for (const char* newName : {"Short", "abcdefghijklmnopqrstuvwxyz0123"}) {
        rename(newName);
        GuardedText current;
        EXPECT_EQ(plugin.ask(effGetProgramName, 0, 0, current.data()), 0);
        EXPECT_EQ(current.text(), std::string(newName).substr(0, 24));
        EXPECT_EQ(current.touched(), 25U);

        GuardedText indexed;
        EXPECT_EQ(plugin.ask(effGetProgramNameIndexed, 0, 0, indexed.data()), 1);
        EXPECT_EQ(indexed.text(), std::string(newName).substr(0, 24));
        EXPECT_EQ(indexed.touched(), 25U);
    }
}

TEST_F(ProgramRequest, IgnoresTheCategoryOfAnIndexedName) {
    for (const VstIntPtr category : {-1, 1, 99}) {
        GuardedText indexed;
        EXPECT_EQ(plugin.ask(effGetProgramNameIndexed, 0, category, indexed.data()), 1);
        EXPECT_EQ(indexed.text(), "Default");
    }
}

TEST_F(ProgramRequest, ReturnsZeroAndWritesNothingForANameAfterTheBank) {
    for (const VstInt32 index : {count(), count() + 1, INT_MAX}) {
        GuardedText indexed;
        EXPECT_EQ(plugin.ask(effGetProgramNameIndexed, index, 0, indexed.data()), 0) << index;
        EXPECT_EQ(indexed.touched(), 0U) << index;
    }
}

TEST_F(ProgramRequest, EndsTheProcessForANameBelowTheBank) {
    GuardedText indexed;
    for (const VstInt32 index : {-1, INT_MIN}) {
        EXPECT_EXIT(plugin.ask(effGetProgramNameIndexed, index, 0, indexed.data()),
                    testing::KilledBySignal(SIGABRT), "out_of_range")
            << index;
    }
}

TEST_F(ProgramRequest, ReturnsZeroBytesAndANullPointerForAChunk) {
    for (const VstInt32 isPreset : {0, 1}) {
        int something = 0;
        void* data = &something;
        EXPECT_EQ(plugin.ask(effGetChunk, isPreset, 0, &data), 0);
        EXPECT_EQ(data, nullptr);
    }
}

TEST_F(ProgramRequest, RestoresNoChunk) {
    const float before = plugin.getParameter(kAttack);
    char bytes[] = "anything at all";
    for (const VstInt32 isPreset : {0, 1}) {
        EXPECT_EQ(plugin.ask(effSetChunk, isPreset, sizeof bytes, bytes), 0);
        EXPECT_EQ(plugin.ask(effSetChunk, isPreset, -1, bytes), 0);
        EXPECT_EQ(plugin.ask(effSetChunk, isPreset, 1000, nullptr), 0);
    }
    EXPECT_STREQ(bytes, "anything at all");
    EXPECT_EQ(plugin.getParameter(kAttack), before);
    EXPECT_EQ(name(), "Default");
}

} // namespace
