#include "host/Error.h"
#include "host/preset/PresetBytes.h"
#include "host/preset/PresetReader.h"
#include "host/preset/PresetWriter.h"
#include "tests/support/PresetBytes.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::string errorOf(const Bytes& bytes) {
    try {
        parsePreset(bytes);
    } catch (const InputError& error) {
        return error.what();
    }
    return "no error";
}

template<typename Change>
std::string programError(Change change) {
    ProgramFields fields;
    change(fields);
    return errorOf(programBytes(fields));
}

template<typename Change>
std::string bankError(Change change) {
    BankFields fields;
    change(fields);
    return errorOf(bankBytes(fields));
}

TEST(PresetReader, ReadsAProgram) {
    const Preset preset = parsePreset(programBytes({}));
    EXPECT_FALSE(preset.isBank);
    EXPECT_EQ(preset.pluginId, vstFourCharacters('p', 'r', 'o', 'g'));
    EXPECT_EQ(preset.pluginVersion, 1);
    ASSERT_EQ(preset.programs.size(), 1U);
    EXPECT_EQ(preset.programs[0].name, "Test");
    EXPECT_THAT(preset.programs[0].values, ElementsAre(0.25F, 0.0F, 1.0F));
}

TEST(PresetReader, ReadsABankWithItsCurrentProgram) {
    BankFields fields;
    fields.programs[3] = programBytes({.name = "Last", .values = {0x3F000000, 0, 0}});
    fields.currentProgram = 3;
    const Preset preset = parsePreset(bankBytes(fields));
    EXPECT_TRUE(preset.isBank);
    EXPECT_EQ(preset.currentProgram, 3);
    ASSERT_EQ(preset.programs.size(), 4U);
    EXPECT_EQ(preset.programs[0].name, "Test");
    EXPECT_EQ(preset.programs[3].name, "Last");
    EXPECT_EQ(preset.programs[3].values[0], 0.5F);
}

TEST(PresetReader, IgnoresTheCurrentProgramOfOlderBanks) {
    BankFields fields;
    fields.version = 1;
    fields.currentProgram = 0xFFFFFFFF;
    EXPECT_EQ(parsePreset(bankBytes(fields)).currentProgram, 0);
}

TEST(PresetReader, SkipsBytesAfterTheEndOfAName) {
    const std::string name("Name\0leftover", 13);
    EXPECT_EQ(parsePreset(programBytes({.name = name})).programs[0].name, "Name");
}

TEST(PresetReader, TakesANameThatFillsItsPlace) {
    const std::string name(27, 'n');
    EXPECT_EQ(parsePreset(programBytes({.name = name})).programs[0].name, name);
}

TEST(PresetReader, RefusesEveryShorterFile) {
    for (const Bytes& whole : {programBytes({}), bankBytes({})}) {
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const std::string error = errorOf(Bytes(whole.begin(), whole.begin() + length));
            EXPECT_THAT(error,
                        length < 8 ? HasSubstr("is not a preset") : HasSubstr("is cut short"));
        }
    }
}

TEST(PresetReader, RefusesBytesAfterTheEnd) {
    Bytes bytes = programBytes({});
    bytes.push_back(0);
    EXPECT_EQ(errorOf(bytes), "the file has 1 bytes more than it announces");
}

TEST(PresetReader, RefusesAnotherMark) {
    EXPECT_EQ(programError([](auto& f) { f.mark = "RIFF"; }),
              "the file is not a preset: it does not begin with 'CcnK'");
}

TEST(PresetReader, RefusesChunksAndUnknownKinds) {
    EXPECT_EQ(programError([](auto& f) { f.kind = "FPCh"; }),
              "the file is a chunk ('FPCh') that only its plug-in can read; 'FxCk' and 'FxBk' hold "
              "parameters");
    EXPECT_THAT(bankError([](auto& f) { f.kind = "FBCh"; }), HasSubstr("is a chunk ('FBCh')"));
    EXPECT_EQ(programError([](auto& f) { f.kind = "Fxck"; }),
              "the file is of the unknown kind 'Fxck'");
}

TEST(PresetReader, RefusesUnknownVersions) {
    EXPECT_EQ(programError([](auto& f) { f.version = 2; }),
              "the program is of the unknown format version 2");
    EXPECT_EQ(programError([](auto& f) { f.version = 0; }),
              "the program is of the unknown format version 0");
    EXPECT_EQ(bankError([](auto& f) { f.version = 3; }),
              "the bank is of the unknown format version 3");
}

TEST(PresetReader, RefusesSizesAndCountsThatAreNotTrue) {
    EXPECT_EQ(programError([](auto& f) { f.sizeError = 4; }),
              "the file is cut short: 64 bytes announced, 60 found");
    EXPECT_EQ(programError([](auto& f) { f.sizeError = -4; }),
              "the file has 4 bytes more than it announces");
    EXPECT_EQ(programError([](auto& f) { f.countError = 1; }),
              "the program announces 4 parameters and has 12 bytes for them");
    EXPECT_EQ(programError([](auto& f) { f.countError = -4; }),
              "the program announces 4294967295 parameters and has 12 bytes for them");
    EXPECT_EQ(bankError([](auto& f) { f.countError = 1; }),
              "the bank announces 5 programs and has 4");
    EXPECT_EQ(bankError([](auto& f) { f.countError = -1; }),
              "the bank announces 3 programs and has 68 bytes after them");
    EXPECT_EQ(bankError([](auto& f) { f.countError = -5; }),
              "the bank announces 4294967295 programs and has 4");
    EXPECT_EQ(bankError([](auto& f) { f.programs[3].resize(7); }), "program 3 is cut short");
}

TEST(PresetReader, RefusesANameThatDoesNotEnd) {
    EXPECT_EQ(programError([](auto& f) { f.name = std::string(28, 'n'); }),
              "the name of the program does not end within its 28 bytes");
}

TEST(PresetReader, RefusesValuesThatAreNotFromZeroToOne) {
    const auto errorWith = [](std::uint32_t bits) {
        return programError([&](auto& f) { f.values[1] = bits; });
    };
    EXPECT_EQ(errorWith(0x7FC00000), "parameter 1 of the program is NaN, not 0 to 1");
    EXPECT_EQ(errorWith(0x3F800001), // the float next to 1
              "parameter 1 of the program is 1.000000, not 0 to 1");
    EXPECT_EQ(errorWith(0xBE800000), "parameter 1 of the program is -0.250000, not 0 to 1");
    EXPECT_THAT(errorWith(0x7F800000), HasSubstr("is inf")); // infinite
    EXPECT_EQ(errorWith(0x80000000), "no error");            // zero with a sign
}

TEST(PresetReader, RefusesABankWithADifferentProgram) {
    const auto errorWith = [](const ProgramFields& program) {
        return bankError([&](auto& f) { f.programs[2] = programBytes(program); });
    };
    EXPECT_EQ(errorWith({.mark = "CcnX"}),
              "program 2 is not a preset: it does not begin with 'CcnK'");
    EXPECT_EQ(errorWith({.pluginId = 1}), "program 2 is for another plug-in than its bank");
    EXPECT_EQ(errorWith({.kind = "FxBk"}), "program 2 is a bank inside a bank");
    EXPECT_THAT(errorWith({.kind = "FPCh"}), HasSubstr("program 2 is a chunk"));
    EXPECT_THAT(errorWith({.sizeError = 1}),
                HasSubstr("program 2 announces 3 parameters and has 13"));
    EXPECT_EQ(errorWith({.values = {0, 0}}), "program 2 has 2 parameters, program 0 3");
    EXPECT_THAT(errorWith({.name = std::string(28, 'n')}), HasSubstr("the name of program 2"));
}

TEST(PresetReader, RefusesACurrentProgramThatIsNotThere) {
    EXPECT_EQ(bankError([](auto& f) { f.currentProgram = 4; }),
              "the bank's current program is 4 of 4");
}

TEST(PresetReader, NamesTheFile) {
    const TemporaryFolder folder;
    writeText(folder / "a.fxp", "no preset");
    try {
        readPreset(folder / "a.fxp");
        FAIL();
    } catch (const InputError& error) {
        EXPECT_THAT(error.what(), HasSubstr("a.fxp: the file is not a preset"));
    }
}

TEST(PresetWriter, WritesAProgramByteForByte) {
    Preset preset;
    preset.pluginId = vstFourCharacters('p', 'r', 'o', 'g');
    preset.pluginVersion = 1;
    preset.programs.push_back({"Test", {0.25F, 0.0F, 1.0F}});
    EXPECT_EQ(presetBytes(preset), programBytes({}));
}

TEST(PresetWriter, WritesABankByteForByte) {
    Preset preset = parsePreset(bankBytes({}));
    preset.currentProgram = 2;
    BankFields fields;
    fields.currentProgram = 2;
    EXPECT_EQ(presetBytes(preset), bankBytes(fields));
}

TEST(PresetWriter, CutsANameSoThatItEnds) {
    Preset preset;
    preset.programs.push_back({std::string(40, 'n'), {}});
    EXPECT_EQ(parsePreset(presetBytes(preset)).programs[0].name, std::string(27, 'n'));
}

TEST(PresetWriter, WritesNothingThatCouldNotBeReadBack) {
    const TemporaryFolder folder;
    Preset preset;
    preset.programs.push_back({"Test", {1.5F}});
    EXPECT_THROW(writePreset(folder / "a.fxp", preset), InputError);
    EXPECT_THAT(folder.names(), IsEmpty());
}

} // namespace
} // namespace zelvatone
