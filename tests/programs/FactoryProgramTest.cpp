// The bank of 42. Expected values are worked out here from the decimal fractions in fractions.csv,
// in extended precision and from the ranges stated here: another route than the engine's doubles.
#include "engine/ZelvatoneEngine.h"
#include "params/ParameterTable.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace zelvatone {
namespace {

struct Range {
    float min;
    float max;
    float defaultValue;
    bool whole; // whole-number kinds round down
};

constexpr std::array<Range, 23> ranges = {{
    {-3, 3, 0, true},    {-5, 5, 1, true},        {0, 100, 2, true},       {0, 100, 20, true},
    {-3, 0, -1, false},  {-1, 1, 0, false},       {0, 100, 0, false},      {-8, 8, 0, false},
    {0.1F, 1, 1, false}, {0, 5, 0, false},        {0.25F, 2, 0.5F, false}, {0.01F, 2, 0.5F, false},
    {1, 5, 1, false},    {0, 4, 0, true},         {0, 8, 0, true},         {0.01F, 1, 0.01F, false},
    {-5, 5, 0, false},   {0, 100, 10, true},      {0.01F, 2, 0.2F, false}, {0.01F, 2, 0.1F, false},
    {0, 1, 0.7F, false}, {0.01F, 2, 0.3F, false}, {0, 4, 0, true},
}};

struct Row {
    std::string name;
    std::vector<std::string> fractions; // decimal text, empty where the program lists none
};

std::vector<Row> readRows() {
    std::vector<Row> rows;
    std::ifstream file(ZELVATONE_FRACTIONS);
    for (std::string line; std::getline(file, line);) {
        std::istringstream cells(line + ','); // a last empty cell counts too
        Row row;
        std::getline(cells, row.name, ',');
        for (std::string cell; std::getline(cells, cell, ',');) {
            row.fractions.push_back(cell);
        }
        rows.push_back(row);
    }
    return rows;
}

float expectedValue(const Range& range, const std::string& fraction) {
    if (fraction.empty()) {
        return range.defaultValue;
    }
    const long double min = range.min;
    const long double max = range.max;
    const auto units = static_cast<float>(min + (max - min) * std::stold(fraction));
    return range.whole ? std::floor(units) : units;
}

class FactoryPrograms : public testing::Test {
protected:
    const SynthProgram& program(const std::string& name) const {
        for (const SynthProgram& candidate : engine->programs) {
            if (candidate.name == name) {
                return candidate;
            }
        }
        ADD_FAILURE() << "no program " << name;
        return engine->programs.front();
    }
    float value(const std::string& name, ParameterIndex index) const {
        return program(name).parameters.at(index)->value;
    }
    std::string display(const std::string& name, ParameterIndex index) const {
        return program(name).parameters.at(index)->getDisplay();
    }

    std::unique_ptr<ZelvatoneEngine> engine = std::make_unique<ZelvatoneEngine>();
};

TEST_F(FactoryPrograms, FollowDefaultInTheOrderOfTheTable) {
    const std::vector<Row> rows = readRows();
    ASSERT_EQ(rows.size(), 41U);
    ASSERT_EQ(engine->programs.size(), 42U);
    EXPECT_EQ(engine->programs[0].name, "Default");
    for (std::size_t k = 0; k < rows.size(); ++k) {
        EXPECT_EQ(engine->programs[k + 1].name, rows[k].name);
    }
}

TEST_F(FactoryPrograms, HoldEveryValueThatTheirFractionsLeadTo) {
    const std::vector<Row> rows = readRows();
    for (std::size_t k = 0; k < rows.size(); ++k) {
        ASSERT_EQ(rows[k].fractions.size(), ranges.size()) << rows[k].name;
        for (std::size_t i = 0; i < ranges.size(); ++i) {
            EXPECT_EQ(engine->programs[k + 1].parameters[i]->value,
                      expectedValue(ranges[i], rows[k].fractions[i]))
                << rows[k].name << ", " << engine->programs[0].parameters[i]->name;
        }
    }
}

TEST_F(FactoryPrograms, LeaveDefaultAtItsDefaults) {
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        EXPECT_EQ(engine->programs[0].parameters[i]->value, ranges[i].defaultValue);
    }
}

TEST_F(FactoryPrograms, KeepTheParameterKindsOfDefault) {
    for (const SynthProgram& program : engine->programs) {
        ASSERT_EQ(program.parameters.size(), ranges.size());
        for (std::size_t i = 0; i < ranges.size(); ++i) {
            const SynthParameter& ours = *program.parameters[i];
            const SynthParameter& theirs = *engine->programs[0].parameters[i];
            EXPECT_EQ(typeid(ours), typeid(theirs)) << program.name.text() << ", " << theirs.name;
            EXPECT_EQ(ours.toUnits, theirs.toUnits);
        }
    }
}

TEST_F(FactoryPrograms, RoundWholeNumbersDownAndNotToTheNearest) {
    EXPECT_EQ(value("Bass Whips", kModeShift), -2.0F);             // -3 + 6 x 0.333333 = -1.000002
    EXPECT_EQ(value("OMG CRAX", kModeShift), -2.0F);               // -3 + 6 x 0.166667 = -1.999998
    EXPECT_EQ(value("Miniarp", kModeShift), 1.0F);                 // -3 + 6 x 0.666667 = 1.000002
    EXPECT_EQ(value("Laser Shots and Vodka", kModeShift), 1.0F);   // -3 + 6 x 0.833333 = 1.999998
    EXPECT_EQ(value("Ring Rhode", kModeShift), 0.0F);              // -3 + 6 x 0.5
    EXPECT_EQ(value("Super Oscillator Bros", kModeShift), 0.0F);   // 0.989652
    EXPECT_EQ(display("Super Oscillator Bros", kCrush), "3 bits"); // 3.999936
    EXPECT_EQ(display("Super Oscillator Bros", kMaxModes), "4 osc");
    EXPECT_EQ(display("Super Oscillator Bros", kModeInit), "2 osc");
    EXPECT_EQ(display("Son of Digital Pad", kWave), "Saw");                 // 2.6
    EXPECT_EQ(display("Son of Digital Pad", kShiftInterval), "1/32 beats"); // -4.83709
    EXPECT_EQ(value("Son of Digital Pad", kReserved), 1.0F);                // 1.08
    EXPECT_EQ(value("Sine-ish", kShiftInterval), -5.0F);                    // -4.9
}

TEST_F(FactoryPrograms, KeepValuesThatOnlyComeCloseToRoundOnes) {
    EXPECT_NEAR(value("Banana Bass", kAttack), 0.1999992, 5e-8);
    EXPECT_NEAR(value("Banana Bass", kDecay), 0.0999997, 5e-8);
    EXPECT_NEAR(value("Banana Bass", kRelease), 0.3000007, 5e-8);
    EXPECT_NE(value("Banana Bass", kAttack), 0.2F);
    EXPECT_EQ(display("Banana Bass", kAttack), "0.20 s");
    EXPECT_EQ(display("Banana Bass", kDecay), "0.10 s");
    EXPECT_EQ(display("Banana Bass", kSustain), "70%");
    EXPECT_EQ(display("Banana Bass", kRelease), "0.30 s");
}

TEST_F(FactoryPrograms, LeaveWhatSineIshDoesNotListAtTheDefaults) {
    const std::array<const char*, 10> texts = {"Sine",   "0 bits", "0.01 s", "0.00 ",  "10 osc",
                                               "0.20 s", "0.10 s", "70%",    "0.30 s", "0 "};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(program("Sine-ish").parameters.at(kWave + i)->getDisplay(), texts[i]);
    }
}

TEST_F(FactoryPrograms, HaveNamesThatReachTheHostWhole) {
    std::size_t longest = 0;
    for (const SynthProgram& program : engine->programs) {
        longest = std::max(longest, program.name.text().size());
    }
    EXPECT_EQ(longest, 24U); // what a host takes
}

TEST_F(FactoryPrograms, StartWithDefaultCurrent) {
    EXPECT_EQ(engine->currentProgram, &engine->programs.front());
}

TEST_F(FactoryPrograms, KeepAnEditWhileAnotherProgramPlays) {
    engine->setProgram(2);
    engine->currentProgram->parameters[kAttack]->setValue(1.5F);
    engine->setProgram(5);
    EXPECT_NE(engine->currentProgram->parameters[kAttack]->value, 1.5F);
    engine->setProgram(2);
    EXPECT_EQ(engine->currentProgram->parameters[kAttack]->value, 1.5F);
}

TEST_F(FactoryPrograms, AreNotReachedByEditsOfDefault) {
    engine->programs[0].parameters[kWave]->setValue(3.0F);
    EXPECT_EQ(value("Sine-ish", kWave), 0.0F);
}

TEST_F(FactoryPrograms, BelongToOneEngineEach) {
    const ZelvatoneEngine other;
    engine->programs[7].parameters[kSustain]->setValue(0.125F);
    EXPECT_NE(other.programs[7].parameters[kSustain]->value, 0.125F);
}

} // namespace
} // namespace zelvatone
