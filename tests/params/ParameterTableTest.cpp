// The 23 parameters, row by row, as a musician finds them.
#include "params/ParameterTable.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>
#include <typeinfo>

namespace zelvatone {
namespace {

enum class Kind { kPlain, kPercent, kWhole, kWave, kBeats };

struct Row {
    std::int32_t index;
    const char* name;
    Kind kind;
    const char* label;
    float min, max, defaultValue;
    const char* shown;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.index << ' ' << row.name;
}

// clang-format off
constexpr std::array<Row, 23> kRows{{
    { 0, "Mode Shift",     Kind::kWhole,   "osc",   -3,     3,   0,     "0 osc"},
    { 1, "Shift Interval", Kind::kBeats,   "beats", -5,     5,   1,     "2 beats"},
    { 2, "Min Modes",      Kind::kWhole,   "osc",   0,      100, 2,     "2 osc"},
    { 3, "Max Modes",      Kind::kWhole,   "osc",   0,      100, 20,    "20 osc"},
    { 4, "Falloff",        Kind::kPlain,   "",      -3,     0,   -1,    "-1.00 "},
    { 5, "Parity",         Kind::kPlain,   "",      -1,     1,   0,     "0.00 "},
    { 6, "Jitter",         Kind::kPlain,   "Hz",    0,      100, 0,     "0.00 Hz"},
    { 7, "Freq Drop",      Kind::kPlain,   "",      -8,     8,   0,     "0.00 "},
    { 8, "Chop",           Kind::kPlain,   "",      0.1F,   1,   1,     "1.00 "},
    { 9, "Modes",          Kind::kPlain,   "",      0,      5,   0,     "0.00 "},
    {10, "Detune",         Kind::kPlain,   "",      0.25F,  2,   0.5F,  "0.50 "},
    {11, "Power",          Kind::kPlain,   "",      0.01F,  2,   0.5F,  "0.50 "},
    {12, "Drop Mod",       Kind::kPlain,   "",      1,      5,   1,     "1.00 "},
    {13, "Wave",           Kind::kWave,    "",      0,      4,   0,     "Sine"},
    {14, "Crush",          Kind::kWhole,   "bits",  0,      8,   0,     "0 bits"},
    {15, "Blend Time",     Kind::kPlain,   "s",     0.01F,  1,   0.01F, "0.01 s"},
    {16, "Exit Peel",      Kind::kPlain,   "",      -5,     5,   0,     "0.00 "},
    {17, "Mode Init",      Kind::kWhole,   "osc",   0,      100, 10,    "10 osc"},
    {18, "Attack",         Kind::kPlain,   "s",     0.01F,  2,   0.2F,  "0.20 s"},
    {19, "Decay",          Kind::kPlain,   "s",     0.01F,  2,   0.1F,  "0.10 s"},
    {20, "Sustain",        Kind::kPercent, "%",     0,      1,   0.7F,  "70%"},
    {21, "Release",        Kind::kPlain,   "s",     0.01F,  2,   0.3F,  "0.30 s"},
    {22, "Reserved",       Kind::kWhole,   "",      0,      4,   0,     "0 "},
}};
// clang-format on

const std::type_info& classOf(Kind kind) {
    switch (kind) {
    case Kind::kPercent:
        return typeid(PercentSynthParameter);
    case Kind::kWhole:
        return typeid(IntegerSynthParameter);
    case Kind::kWave:
        return typeid(WaveSynthParameter);
    case Kind::kBeats:
        return typeid(BeatsSynthParameter);
    default:
        return typeid(SynthParameter);
    }
}

class ParameterTableRow : public ::testing::TestWithParam<Row> {
protected:
    SynthProgram program = makeDefaultProgram();
    SynthParameter& parameter = *program.parameters.at(static_cast<std::size_t>(GetParam().index));
};

TEST_P(ParameterTableRow, HasItsNameLabelAndKind) {
    EXPECT_EQ(parameter.name, GetParam().name);
    EXPECT_EQ(parameter.label, GetParam().label);
    EXPECT_EQ(typeid(parameter), classOf(GetParam().kind));
}

TEST_P(ParameterTableRow, HasItsRangeAndStandsAtItsDefault) {
    EXPECT_EQ(parameter.min, GetParam().min);
    EXPECT_EQ(parameter.max, GetParam().max);
    EXPECT_EQ(parameter.defaultValue, GetParam().defaultValue);
    EXPECT_EQ(parameter.value, GetParam().defaultValue);
}

TEST_P(ParameterTableRow, ShowsItsDefault) {
    EXPECT_EQ(parameter.getDisplay(), GetParam().shown);
}

TEST_P(ParameterTableRow, StaysInItsRange) {
    parameter.setValue(parameter.min - 1.0F);
    EXPECT_EQ(parameter.value, GetParam().min);
    parameter.setValue(parameter.max + 1.0F);
    EXPECT_EQ(parameter.value, GetParam().max);
}

std::string wordsOf(const ::testing::TestParamInfo<Row>& row) {
    std::string words;
    for (const char* c = row.param.name; *c != '\0'; ++c) {
        if (*c != ' ') {
            words += *c;
        }
    }
    return words;
}

INSTANTIATE_TEST_SUITE_P(, ParameterTableRow, ::testing::ValuesIn(kRows), wordsOf);

TEST(ParameterTable, HasTwentyThreeRowsTheLastOneReserved) {
    const SynthProgram program = makeDefaultProgram();
    EXPECT_EQ(program.parameters.size(), 23U);
    EXPECT_EQ(kParameterCount, 23);
    EXPECT_EQ(program.parameters.back()->name, "Reserved");
}

TEST(ParameterTable, NamesItsIndicesInTheOrderOfTheRows) {
    EXPECT_EQ(kModeShift, 0);
    EXPECT_EQ(kShiftInterval, 1);
    EXPECT_EQ(kMinModes, 2);
    EXPECT_EQ(kMaxModes, 3);
    EXPECT_EQ(kFalloff, 4);
    EXPECT_EQ(kParity, 5);
    EXPECT_EQ(kJitter, 6);
    EXPECT_EQ(kFreqDrop, 7);
    EXPECT_EQ(kChop, 8);
    EXPECT_EQ(kModes, 9);
    EXPECT_EQ(kDetune, 10);
    EXPECT_EQ(kPower, 11);
    EXPECT_EQ(kDropMod, 12);
    EXPECT_EQ(kWave, 13);
    EXPECT_EQ(kCrush, 14);
    EXPECT_EQ(kBlendTime, 15);
    EXPECT_EQ(kExitPeel, 16);
    EXPECT_EQ(kModeInit, 17);
    EXPECT_EQ(kAttack, 18);
    EXPECT_EQ(kDecay, 19);
    EXPECT_EQ(kSustain, 20);
    EXPECT_EQ(kRelease, 21);
    EXPECT_EQ(kReserved, 22);
}

TEST(ParameterTable, OnlyFalloffLiesWhollyBelowZero) {
    const SynthProgram program = makeDefaultProgram();
    for (const SynthParameter* parameter : program.parameters) {
        EXPECT_EQ(parameter->max <= 0.0F, parameter->name == "Falloff") << parameter->name;
    }
}

TEST(DefaultProgram, IsUnnamedAndMadeAfreshEveryTime) {
    const SynthProgram first = makeDefaultProgram();
    const SynthProgram second = makeDefaultProgram();
    EXPECT_EQ(first.name, "Unnamed Program");
    first.parameters[kChop]->setValue(0.5F);
    EXPECT_EQ(second.parameters[kChop]->value, 1.0F);
}

} // namespace
} // namespace zelvatone
