#include "host/preset/PresetTransfer.h"
#include "host/preset/PresetBytes.h"

#include "host/Error.h"
#include "host/plugin/Programs.h"
#include "host/preset/PresetReader.h"
#include "tests/support/PresetBytes.h"
#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace zelvatone {
namespace {

using ::testing::HasSubstr;

std::string checkError(const Preset& preset, const HostedPlugin& plugin) {
    try {
        checkPreset(preset, plugin);
    } catch (const InputError& error) {
        return error.what();
    }
    return "no error";
}

class PresetTransferTest : public ::testing::Test {
protected:
    const PluginLibrary programmed_{testPlugin("programmed")};
    const PluginLibrary instrument_{TEST_INSTRUMENT};
    HostedPlugin plugin_{programmed_, {}};
};

TEST_F(PresetTransferTest, TakesTheCurrentProgram) {
    selectProgram(plugin_, 2);
    const Preset preset = takeProgram(plugin_);
    EXPECT_EQ(presetBytes(preset),
              programBytes({.name = "High Low", .values = {0x3E800000, 0x3E4CCCCD, 0x3F000000}}));
}

TEST_F(PresetTransferTest, TakesTheBankAndLeavesTheProgram) {
    selectProgram(plugin_, 1);
    const Preset bank = takeBank(plugin_);
    ASSERT_EQ(bank.programs.size(), 4U);
    EXPECT_EQ(bank.programs[3].name, "Up/Down");
    EXPECT_EQ(bank.programs[3].values[0], 0.3F);
    EXPECT_EQ(bank.currentProgram, 1);
    EXPECT_EQ(currentProgram(plugin_), 1);
}

TEST_F(PresetTransferTest, PutsAProgramInThePlaceOfTheCurrentOne) {
    selectProgram(plugin_, 1);
    applyPreset(plugin_, parsePreset(programBytes({})));
    EXPECT_EQ(plugin_.text(effGetProgramName), "Test");
    EXPECT_EQ(plugin_.parameter(0), 0.25F);
    EXPECT_EQ(plugin_.parameter(2), 1.0F);
    EXPECT_EQ(currentProgram(plugin_), 1);
    selectProgram(plugin_, 0);
    EXPECT_EQ(plugin_.text(effGetProgramName), "Low");
}

TEST_F(PresetTransferTest, PutsABankInThePlaceOfAllPrograms) {
    BankFields fields;
    fields.currentProgram = 2;
    applyPreset(plugin_, parsePreset(bankBytes(fields)));
    EXPECT_EQ(currentProgram(plugin_), 2);
    for (int i = 0; i < 4; ++i) {
        selectProgram(plugin_, i);
        EXPECT_EQ(plugin_.text(effGetProgramName), "Test");
        EXPECT_EQ(plugin_.parameter(0), 0.25F);
    }
}

TEST_F(PresetTransferTest, RefusesAPresetForAnotherPlugIn) {
    EXPECT_EQ(checkError(parsePreset(programBytes({.pluginId = 61546})), plugin_),
              "is for the plug-in with the id 61546, not for this one with 1886547815");
    EXPECT_EQ(checkError(parsePreset(programBytes({.values = {0, 0}})), plugin_),
              "has 2 parameters, the plug-in 3");
    BankFields fields;
    fields.programs.pop_back();
    EXPECT_EQ(checkError(parsePreset(bankBytes(fields)), plugin_), "has 3 programs, the plug-in 4");
    EXPECT_EQ(checkError(parsePreset(bankBytes({})), plugin_), "no error");
}

// Floored hundredths: 100 * 0.53F is 52.999999..., and so is 100 * 0.59F below 59.
TEST_F(PresetTransferTest, LandsOnTheStepThatTheFileMeans) {
    for (const float value : {0.53F, 0.59F}) {
        plugin_.setParameter(1, value);
        EXPECT_LT(plugin_.parameter(1), value); // what this is about
        setAsReported(plugin_, 1, value);
        EXPECT_EQ(plugin_.parameter(1), value);
    }
}

TEST_F(PresetTransferTest, SetsTheValueItselfWhereNoNeighbourIsReportedSo) {
    setAsReported(plugin_, 2, 0.6F);
    EXPECT_EQ(plugin_.parameter(2), 0.5F);
    setAsReported(plugin_, 2, 1.0F);
    EXPECT_EQ(plugin_.parameter(2), 1.0F);
    setAsReported(plugin_, 2, 0.0F);
    EXPECT_EQ(plugin_.parameter(2), 0.0F);
}

// The instrument's 42 programs through files and back into an instrument that holds others.
TEST_F(PresetTransferTest, CarriesEveryProgramOfTheInstrumentToTheBit) {
    HostedPlugin from(instrument_, {});
    HostedPlugin to(instrument_, {});
    ASSERT_EQ(from.programCount(), 42);
    for (int i = 0; i < from.programCount(); ++i) {
        selectProgram(from, i);
        const auto bytes = presetBytes(takeProgram(from));
        selectProgram(to, (i + 1) % 42);
        applyPreset(to, parsePreset(bytes));
        EXPECT_EQ(presetBytes(takeProgram(to)), bytes) << i;
    }
}

TEST_F(PresetTransferTest, CarriesTheBankOfTheInstrumentToTheBit) {
    HostedPlugin from(instrument_, {});
    HostedPlugin to(instrument_, {});
    for (int i = 0; i < to.programCount(); ++i) { // something else everywhere
        selectProgram(to, i);
        for (int p = 0; p < to.parameterCount(); ++p) {
            to.setParameter(p, 0.37F);
        }
    }
    selectProgram(from, 41);
    const auto bytes = presetBytes(takeBank(from));
    applyPreset(to, parsePreset(bytes));
    EXPECT_EQ(presetBytes(takeBank(to)), bytes);
}

// Whatever a knob was turned to: what the instrument reports can be set again.
TEST_F(PresetTransferTest, BringsBackEveryValueThatTheInstrumentReports) {
    HostedPlugin plugin(instrument_, {});
    for (int index = 0; index < plugin.parameterCount(); ++index) {
        for (int i = 0; i <= 1000; ++i) {
            plugin.setParameter(index, static_cast<float>(i) / 1000.0F);
            const float reported = plugin.parameter(index);
            plugin.setParameter(index, 1.0F - reported);
            setAsReported(plugin, index, reported);
            EXPECT_EQ(plugin.parameter(index), reported) << index;
        }
    }
}

} // namespace
} // namespace zelvatone
