// Programs own their parameters: every copy is deep.
#include "params/SynthProgram.h"
#include "params/ParameterTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

namespace zelvatone {
namespace {

SynthProgram editedProgram() {
    SynthProgram program = makeDefaultProgram();
    program.name = "Edited";
    program.parameters[kChop]->setValue(0.25F);
    program.parameters[kWave]->setValue(3.0F);
    return program;
}

void expectDeepCopy(const SynthProgram& copy, const SynthProgram& source) {
    EXPECT_EQ(copy.name, source.name);
    ASSERT_EQ(copy.parameters.size(), source.parameters.size());
    for (std::size_t i = 0; i < copy.parameters.size(); ++i) {
        EXPECT_NE(copy.parameters[i], source.parameters[i]);
        EXPECT_EQ(copy.parameters[i]->name, source.parameters[i]->name);
        EXPECT_EQ(copy.parameters[i]->value, source.parameters[i]->value);
        EXPECT_EQ(copy.parameters[i]->getDisplay(), source.parameters[i]->getDisplay());
    }
}

TEST(SynthProgram, BeginsUnnamedWithUnnamedParameters) {
    const SynthProgram program(3);
    EXPECT_EQ(program.name, "Unnamed Program");
    ASSERT_EQ(program.parameters.size(), 3U);
    for (const SynthParameter* parameter : program.parameters) {
        EXPECT_EQ(parameter->name, "Unnamed Parameter");
    }
    EXPECT_NE(program.parameters[0], program.parameters[1]);
}

TEST(SynthProgram, MayBeEmpty) {
    const SynthProgram none(0);
    SynthProgram copy = editedProgram();
    copy = none;
    EXPECT_TRUE(copy.parameters.empty());
}

TEST(SynthProgram, IsCopiedDeeply) {
    const SynthProgram source = editedProgram();
    const SynthProgram copy(source); // NOLINT(performance-unnecessary-copy-initialization)
    expectDeepCopy(copy, source);
    source.parameters[kChop]->setValue(0.75F);
    EXPECT_EQ(copy.parameters[kChop]->value, 0.25F);
}

TEST(SynthProgram, IsAssignedDeeply) {
    const SynthProgram source = editedProgram();
    SynthProgram target = makeDefaultProgram();
    target = source;
    expectDeepCopy(target, source);
    target.parameters[kWave]->setValue(1.0F);
    EXPECT_EQ(source.parameters[kWave]->getDisplay(), "Poly");
}

TEST(SynthProgram, TakesOverAnotherNumberOfParameters) {
    const SynthProgram source = editedProgram();
    SynthProgram target(2);
    target = source;
    expectDeepCopy(target, source);
}

TEST(SynthProgram, AssignedToItselfKeepsEveryParameterObject) {
    SynthProgram program = editedProgram();
    const std::vector<SynthParameter*> before = program.parameters;
    const SynthProgram& itself = program;
    program = itself;
    EXPECT_EQ(program.parameters, before);
    EXPECT_EQ(program.name, "Edited");
    EXPECT_EQ(program.parameters[kChop]->value, 0.25F);
}

TEST(SynthProgram, CopiesNotANumberToo) {
    SynthProgram source = makeDefaultProgram();
    source.parameters[kPower]->setValue(std::numeric_limits<float>::quiet_NaN());
    const SynthProgram copy(source); // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_TRUE(std::isnan(copy.parameters[kPower]->value));
}

TEST(SynthProgram, ReplacesOneParameterAndKeepsTheOthers) {
    SynthProgram program(3);
    const std::vector<SynthParameter*> before = program.parameters;
    auto* wave = new WaveSynthParameter("Wave", "", 0.0F, 4.0F, 2.0F);
    program.replaceParameter(1, wave);
    EXPECT_THAT(program.parameters, ::testing::ElementsAre(before[0], wave, before[2]));
    EXPECT_EQ(program.parameters[1]->getDisplay(), "Saw");
}

TEST(ProgramBank, KeepsNamesAndEditsWhenItGrows) {
    ProgramBank bank;
    bank.push_back(editedProgram());
    for (int i = 0; i < 41; ++i) {
        bank.push_back(makeDefaultProgram());
    }
    expectDeepCopy(bank.front(), editedProgram());
    EXPECT_EQ(bank.back().parameters[kChop]->value, 1.0F);
}

TEST(SynthProgramDeathTest, EndsTheProcessAtASlotThatItDoesNotHave) {
    SynthProgram program(3);
    SynthParameter spare;
    EXPECT_DEATH(program.replaceParameter(3, &spare), "");
    EXPECT_DEATH(program.replaceParameter(-1, &spare), "");
}

} // namespace
} // namespace zelvatone
