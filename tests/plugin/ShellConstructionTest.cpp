#include "tests/plugin/ShellTest.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <new>

namespace {

using zelvatone::SynthIdentity;
using zelvatone::VSTGuiVSTInterface;
using zelvatone::VstInterface;

constexpr SynthIdentity kFourOutputs{.numInputs = 1,
                                     .numOutputs = 4,
                                     .effectName = "An effect's name that has 38 characters",
                                     .vendorName = "",
                                     .productName = "Product",
                                     .vendorVersion = -3};

// Lets tests see the fields that only the plug-in itself uses.
class OpenInterface : public VstInterface {
public:
    using VstInterface::VstInterface;

    using VstInterface::engine;
    using VstInterface::parameterCount;
    using VstInterface::programCount;
};

using ShellConstruction = ShellTest;

TEST_F(ShellConstruction, CountsWhatTheEngineHas) {
    EXPECT_EQ(effect.record->numPrograms, 3);
    EXPECT_EQ(effect.record->numParams, 23);
    EXPECT_EQ(effect.record->numInputs, 0);
    EXPECT_EQ(effect.record->numOutputs, 2);
    EXPECT_EQ(effect.record->uniqueID, kUniqueID);
    EXPECT_EQ(effect.record->flags, 0x111);
}

TEST_F(ShellConstruction, SelectsTheFirstProgram) {
    EXPECT_EQ(engine.programsGiven, std::vector<std::int32_t>{0});
    EXPECT_EQ(engine.currentProgram, &engine.programs.front());
    EXPECT_EQ(effect.ask(effGetProgram), 0);
}

TEST_F(ShellConstruction, AsksTheHostForNothing) {
    EXPECT_TRUE(host.calls.empty());
}

TEST_F(ShellConstruction, StartsAtTheUsualRateAndBlockSize) {
    EXPECT_EQ(plugin->getSampleRate(), 44100.0F);
    EXPECT_EQ(plugin->getBlockSize(), 1024);
    EXPECT_TRUE(engine.ratesGiven.empty());
}

TEST_F(ShellConstruction, CountsTheParametersOfTheFirstProgram) {
    SpyEngine uneven;
    uneven.programs.front() = zelvatone::SynthProgram(2);
    const OpenInterface over(RecordingHost::callback, &uneven, kUniqueID, false);
    EXPECT_EQ(over.parameterCount, 2);
    EXPECT_EQ(over.programCount, 3);
    EXPECT_EQ(over.engine, &uneven);
}

TEST_F(ShellConstruction, TakesChannelsFromTheEngine) {
    SpyEngine wide(kFourOutputs);
    VstInterface over(RecordingHost::callback, &wide, kUniqueID, false);
    EXPECT_EQ(over.getAeffect()->numInputs, 1);
    EXPECT_EQ(over.getAeffect()->numOutputs, 4);
}

TEST_F(ShellConstruction, AnnouncesChunksOnlyWhenToldTo) {
    VstInterface with(RecordingHost::callback, &engine, kUniqueID, true);
    VstInterface without(RecordingHost::callback, &engine, kUniqueID, false);
    EXPECT_EQ(with.getAeffect()->flags, 0x110 | effFlagsProgramChunks);
    EXPECT_EQ(without.getAeffect()->flags, 0x110);
}

TEST_F(ShellConstruction, LeavesTheRecordAsTheBaseMakesItWithoutAHost) {
    VstInterface alone(nullptr, &engine, kUniqueID, true);
    const AEffect& record = *alone.getAeffect();
    EXPECT_EQ(record.flags, 0);
    EXPECT_NE(record.uniqueID, kUniqueID);
    EXPECT_EQ(record.numPrograms, 3);
    EXPECT_EQ(record.numParams, 23);
    EXPECT_EQ(engine.programsGiven.back(), 0);
}

TEST_F(ShellConstruction, StillRendersWithoutAHost) {
    VstInterface alone(nullptr, &engine, kUniqueID, false);
    alone.resume();
    alone.processReplacing(nullptr, nullptr, 16);
    ASSERT_EQ(engine.renders.size(), 1U);
    EXPECT_EQ(engine.renders[0].tempo, 120.0F);
}

TEST_F(ShellConstruction, EndsTheProcessOverAnEmptyBank) {
    SpyEngine empty;
    empty.programs.clear();
    EXPECT_EXIT(VstInterface(RecordingHost::callback, &empty, kUniqueID, false),
                testing::KilledBySignal(SIGABRT), "out_of_range");
}

TEST_F(ShellConstruction, ZeroesThePaddingOfTheRecord) {
    alignas(VSTGuiVSTInterface) std::array<std::byte, sizeof(VSTGuiVSTInterface)> memory{};
    memory.fill(std::byte{0xCC});
    auto* over = new (memory.data()) VSTGuiVSTInterface(RecordingHost::callback, &engine, 1);

    std::array<unsigned char, sizeof(AEffect)> bytes{};
    std::memcpy(bytes.data(), over->getAeffect(), bytes.size());
    over->~VSTGuiVSTInterface();

    const auto isZero = [](unsigned char byte) { return byte == 0; };
    const auto zeroBetween = [&](std::size_t from, std::size_t to) {
        return std::all_of(bytes.begin() + from, bytes.begin() + to, isZero);
    };
    EXPECT_TRUE(zeroBetween(4, 8));     // after magic
    EXPECT_TRUE(zeroBetween(60, 80));   // after flags, and the host's two places
    EXPECT_TRUE(zeroBetween(136, 192)); // at the end
}

TEST_F(ShellConstruction, TellsTheEnginesNames) {
    EXPECT_EQ(effect.text(effGetEffectName), "Effect");
    EXPECT_EQ(effect.text(effGetVendorString), "Vendor");
    EXPECT_EQ(effect.text(effGetProductString), "Product");
    EXPECT_EQ(effect.ask(effGetVendorVersion), 7);
}

TEST_F(ShellConstruction, CutsALongEffectNameAfter32Characters) {
    SpyEngine named(kFourOutputs);
    VstInterface over(RecordingHost::callback, &named, kUniqueID, false);
    EXPECT_EQ(HostedEffect(over.getAeffect()).text(effGetEffectName),
              "An effect's name that has 38 cha");
}

TEST_F(ShellConstruction, PairsTheFirstTwoOutputsOnly) {
    SpyEngine wide(kFourOutputs);
    VstInterface over(RecordingHost::callback, &wide, kUniqueID, false);
    VstPinProperties pins{};
    EXPECT_TRUE(over.getOutputProperties(1, &pins));
    EXPECT_EQ(pins.flags, 3);
    EXPECT_TRUE(over.getOutputProperties(2, &pins));
    EXPECT_STREQ(pins.label, "Vstx 3");
    EXPECT_EQ(pins.flags, 1);
    EXPECT_FALSE(over.getOutputProperties(4, &pins));
}

TEST_F(ShellConstruction, CopiesNoProgramsAndSaysSo) {
    testing::internal::CaptureStdout();
    const bool copied = plugin->copyProgram(1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "STUB: VstInterface::copyProgram\n");
    EXPECT_FALSE(copied);
}

} // namespace
