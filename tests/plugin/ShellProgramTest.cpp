// Programs and parameters over a bank of three.
#include "tests/plugin/ShellTest.h"
#include "vst2/aeffeditor.h"

#include <climits>
#include <csignal>
#include <vector>

namespace {

using zelvatone::kAttack;
using zelvatone::SynthProgram;

using ShellProgram = ShellTest;

TEST_F(ShellProgram, SelectionMovesTheEngineAlong) {
    EXPECT_EQ(effect.ask(effSetProgram, 0, 2), 0);
    EXPECT_EQ(effect.ask(effGetProgram), 2);
    EXPECT_EQ(engine.currentProgram, &engine.programs[2]);
    EXPECT_EQ(effect.text(effGetProgramName), "Third");
}

TEST_F(ShellProgram, SelectionOutsideTheBankChangesNothing) {
    effect.ask(effSetProgram, 0, 2);
    const auto given = engine.programsGiven;
    // The last two would be program 0, were their upper halves lost.
    for (const VstIntPtr index : {VstIntPtr{3}, VstIntPtr{4}, VstIntPtr{-1}, VstIntPtr{INT_MIN},
                                  VstIntPtr{1} << 32, -(VstIntPtr{1} << 32)}) {
        EXPECT_EQ(effect.ask(effSetProgram, 0, index), 0);
        EXPECT_EQ(effect.ask(effGetProgram), 2) << index;
    }
    EXPECT_EQ(engine.programsGiven, given);
    EXPECT_EQ(engine.currentProgram, &engine.programs[2]);
}

TEST_F(ShellProgram, SelectionGoesByTheBankAsItIsNow) {
    engine.programs.pop_back();
    EXPECT_EQ(effect.ask(effSetProgram, 0, 2), 0); // was there when the record was filled
    EXPECT_EQ(effect.ask(effGetProgram), 0);
    EXPECT_EQ(effect.record->numPrograms, 3);
}

TEST_F(ShellProgram, EditsStayWithTheirProgram) {
    effect.ask(effSetProgram, 0, 1);
    effect.setParameter(kAttack, 1.0F);
    effect.ask(effSetProgram, 0, 2);
    EXPECT_FLOAT_EQ(effect.getParameter(kAttack), 0.19F / 1.99F);
    effect.ask(effSetProgram, 0, 1);
    EXPECT_EQ(effect.getParameter(kAttack), 1.0F);
    EXPECT_EQ(engine.programs[1].parameters[kAttack]->value, 2.0F);
    EXPECT_EQ(engine.programs[0].parameters[kAttack]->value, 0.2F);
}

TEST_F(ShellProgram, RenamingReachesTheCurrentOneOnly) {
    effect.ask(effSetProgram, 0, 1);
    char name[] = "abcdefghijklmnopqrstuvwxyz";
    EXPECT_EQ(effect.ask(effSetProgramName, 0, 0, name), 0);
    EXPECT_EQ(engine.programs[0].name, "First");
    EXPECT_EQ(engine.programs[1].name, "abcdefghijklmnopqrstuvwx");
    EXPECT_EQ(engine.programs[2].name, "Third");
}

TEST_F(ShellProgram, NamesAreFoundByIndexWithoutSelecting) {
    EXPECT_EQ(effect.text(effGetProgramNameIndexed, 1), "Second");
    EXPECT_EQ(effect.text(effGetProgramNameIndexed, 2), "Third");
    EXPECT_EQ(effect.ask(effGetProgram), 0);
}

TEST_F(ShellProgram, LongNamesAreCutOnTheWayOut) {
    engine.programs[0].name = "abcdefghijklmnopqrstuvwxyz";
    EXPECT_EQ(effect.text(effGetProgramName), "abcdefghijklmnopqrstuvwx");
    EXPECT_EQ(effect.text(effGetProgramNameIndexed, 0), "abcdefghijklmnopqrstuvwx");
    EXPECT_EQ(engine.programs[0].name, "abcdefghijklmnopqrstuvwxyz");
}

TEST_F(ShellProgram, ParametersAreStoredInUnits) {
    effect.setParameter(kAttack, 0.5F);
    EXPECT_FLOAT_EQ(engine.programs[0].parameters[kAttack]->value, 1.005F); // middle of 0.01 to 2
    effect.setParameter(kAttack, 1.5F);
    EXPECT_EQ(engine.programs[0].parameters[kAttack]->value, 2.0F);
    effect.setParameter(kAttack, -1.0F);
    EXPECT_EQ(engine.programs[0].parameters[kAttack]->value, 0.01F);
}

TEST_F(ShellProgram, TheFirstOnesParameterCountRulesForAll) {
    engine.programs[1] = SynthProgram(30); // more than the first one's 23
    effect.ask(effSetProgram, 0, 1);
    effect.setParameter(24, 1.0F);
    EXPECT_EQ(effect.getParameter(24), 0.0F);
    EXPECT_EQ(effect.text(effGetParamName, 24), "");
    effect.setParameter(23, 1.0F); // equal to the count passes, and here something is there
    EXPECT_EQ(effect.getParameter(23), 1.0F);
    EXPECT_EQ(effect.text(effGetParamName, 23), "Unnamed ");
}

TEST_F(ShellProgram, EndsTheProcessAfterTheLastOfItsFewerParameters) {
    engine.programs[1] = SynthProgram(4);
    delete plugin->getEditor(); // would ask for all parameters of the new program
    plugin->setEditor(nullptr);
    effect.ask(effSetProgram, 0, 1);
    EXPECT_EXIT(effect.setParameter(4, 1.0F), testing::KilledBySignal(SIGABRT), "out_of_range");
}

} // namespace
