// Requests for the plug-in's identity, and those that it does not support.
#include "tests/plugin/GuardedText.h"
#include "tests/plugin/LoadedPlugin.h"

#include <climits>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using HostRequest = LoadedPluginTest;

TEST_F(HostRequest, ReturnsZeroAndTouchesNothingWhenItHasNoMeaningHere) {
    const std::vector<VstInt32> requests = {effOpen,
                                            effGetInputProperties,
                                            effOfflineNotify,
                                            effOfflinePrepare,
                                            effOfflineRun,
                                            effProcessVarIo,
                                            effSetSpeakerArrangement,
                                            effSetBypass,
                                            effVendorSpecific,
                                            effGetTailSize,
                                            effGetParameterProperties,
                                            effString2Parameter,
                                            effGetMidiProgramName,
                                            effGetMidiProgramCategory,
                                            effHasMidiProgramsChanged,
                                            effGetMidiKeyName,
                                            effBeginSetProgram,
                                            effEndSetProgram,
                                            effShellGetNextPlugin,
                                            effStartProcess,
                                            effStopProcess,
                                            effSetPanLaw,
                                            effBeginLoadBank,
                                            effBeginLoadProgram,
                                            effSetProcessPrecision};
    for (const VstInt32 request : requests) {
        GuardedText buffer;
        GuardedText second;
        const auto value = reinterpret_cast<VstIntPtr>(second.data());
        EXPECT_EQ(plugin.ask(request, 1, value, buffer.data(), 1.0F), 0) << request;
        EXPECT_EQ(buffer.touched(), 0U) << request;
        EXPECT_EQ(second.touched(), 0U) << request;
    }
    EXPECT_TRUE(host.calls.empty());
}

TEST_F(HostRequest, ReturnsZeroAndTouchesNothingWhenWithdrawnOrUnknown) {
    const std::vector<VstInt32> requests = {9,  16,  17,   18,      20, 21, 28,     30, 31,
                                            32, 36,  37,   43,      46, 53, 54,     55, 57,
                                            80, 255, 1000, INT_MAX, -1, -2, INT_MIN};
    for (const VstInt32 request : requests) {
        GuardedText buffer;
        GuardedText second;
        const auto value = reinterpret_cast<VstIntPtr>(second.data());
        EXPECT_EQ(plugin.ask(request, 1, value, buffer.data(), 1.0F), 0) << request;
        EXPECT_EQ(buffer.touched(), 0U) << request;
        EXPECT_EQ(second.touched(), 0U) << request;
    }
    EXPECT_TRUE(host.calls.empty());
}

TEST_F(HostRequest, SurvivesAMissingBuffer) {
    for (VstInt32 request = 0; request < 80; ++request) {
        if (request != effClose) {
            plugin.ask(request);
        }
    }
    EXPECT_EQ(plugin.text(effGetEffectName), "Zelvatone");
}

TEST_F(HostRequest, ReturnsNvEfAsIdentification) {
    EXPECT_EQ(plugin.ask(effIdentify), 0x4E764566); // N v E f in ASCII
}

TEST_F(HostRequest, ReturnsPlainNumbers) {
    EXPECT_EQ(plugin.ask(effGetPlugCategory), 2);
    EXPECT_EQ(plugin.ask(effGetVendorVersion), 1);
    EXPECT_EQ(plugin.ask(effGetVstVersion), 2400);
    EXPECT_EQ(plugin.ask(effGetCurrentMidiProgram), -1);
    EXPECT_EQ(plugin.ask(effGetNumMidiInputChannels), 1);
    EXPECT_EQ(plugin.ask(effGetNumMidiOutputChannels), 0);
}

TEST_F(HostRequest, ReturnsAllBitsOfTheTotalSamples) {
    for (const VstIntPtr total : {VstIntPtr{0}, VstIntPtr{1}, VstIntPtr{-1},
                                  VstIntPtr{0x0123456789ABCDEF}, INTPTR_MIN, INTPTR_MAX}) {
        EXPECT_EQ(plugin.ask(effSetTotalSampleToProcess, 0, total), total);
    }
}

TEST_F(HostRequest, SetsBothPointersToSpeakerArrangementsToNull) {
    int something = 0;
    void* input = &something;
    void* output = &something;

    EXPECT_EQ(plugin.ask(effGetSpeakerArrangement, 0, reinterpret_cast<VstIntPtr>(&input), &output),
              0);
    EXPECT_EQ(input, nullptr);
    EXPECT_EQ(output, nullptr);
}

TEST_F(HostRequest, SetsEitherPointerToASpeakerArrangementToNullAlone) {
    int something = 0;
    void* input = &something;
    void* output = &something;

    EXPECT_EQ(plugin.ask(effGetSpeakerArrangement, 0, reinterpret_cast<VstIntPtr>(&input)), 0);
    EXPECT_EQ(plugin.ask(effGetSpeakerArrangement, 0, 0, &output), 0);
    EXPECT_EQ(input, nullptr);
    EXPECT_EQ(output, nullptr);
}

TEST_F(HostRequest, Writes32CharactersOfTheEffectNameAndATerminator) {
    GuardedText name;
    EXPECT_EQ(plugin.ask(effGetEffectName, 0, 0, name.data()), 1);
    EXPECT_EQ(name.text(), "Zelvatone");
    EXPECT_EQ(name.touched(), 33U);
}

TEST_F(HostRequest, Writes64CharactersOfTheVendorAndATerminator) {
    GuardedText vendor;
    EXPECT_EQ(plugin.ask(effGetVendorString, 0, 0, vendor.data()), 1);
    EXPECT_EQ(vendor.text(), "Quillfeather");
    EXPECT_EQ(vendor.touched(), 65U);
}

TEST_F(HostRequest, Writes64CharactersOfTheProductAndATerminator) {
    GuardedText product;
    EXPECT_EQ(plugin.ask(effGetProductString, 0, 0, product.data()), 1);
    EXPECT_EQ(product.text(), "Zelvatone");
    EXPECT_EQ(product.touched(), 65U);
}

TEST_F(HostRequest, ReturnsYesForEventCapabilities) {
    for (const char* capability : {"receiveVstEvents", "receiveVstMidiEvent"}) {
        std::string text = capability;
        EXPECT_EQ(plugin.ask(effCanDo, 0, 0, text.data()), 1) << capability;
    }
}

TEST_F(HostRequest, ReturnsNoForAnyOtherCapability) {
    for (const char* capability :
         {"receiveVstTimeInfo", "sendVstEvents", "sendVstMidiEvent", "sendVstTimeInfo", "bypass",
          "offline", "midiProgramNames", "plugAsChannelInsert", "", " receiveVstEvents",
          "receiveVstEvents ", "ReceiveVstEvents", "receivevstevents", "RECEIVEVSTMIDIEVENT",
          "receiveVstEvent", "receiveVstMidiEvents", "receiveVstMidi"}) {
        std::string text = capability;
        EXPECT_EQ(plugin.ask(effCanDo, 0, 0, text.data()), -1) << capability;
    }
}

TEST_F(HostRequest, MakesThePluginAskForMidiWhenItSwitchesOn) {
    EXPECT_EQ(plugin.ask(effMainsChanged, 0, 1), 0);

    ASSERT_EQ(host.calls.size(), 1U);
    EXPECT_EQ(host.calls[0].effect, plugin.record);
    EXPECT_EQ(host.calls[0].opcode, 6); // audioMasterWantMidi
    EXPECT_EQ(host.calls[0].value, 1);
}

TEST_F(HostRequest, SwitchesOnWithAnyValueButZero) {
    plugin.ask(effMainsChanged, 0, -1);
    plugin.ask(effMainsChanged, 0, VstIntPtr{1} << 32); // zero in its low half

    EXPECT_EQ(host.callsOf(audioMasterWantMidi).size(), 2U);
}

TEST_F(HostRequest, AsksTheHostForNothingWhenItSwitchesOff) {
    EXPECT_EQ(plugin.ask(effMainsChanged, 0, 0), 0);
    EXPECT_TRUE(host.calls.empty());
}

TEST_F(HostRequest, ReturnsOneWhenItCloses) {
    EXPECT_EQ(plugin.close(), 1);
}

// With its window closed; what it shows is tested elsewhere.
TEST_F(HostRequest, PassesEditorRequestsOn) {
    ERect* rect = nullptr;
    EXPECT_EQ(plugin.ask(effEditGetRect, 0, 0, &rect), 1);
    EXPECT_NE(rect, nullptr);
    EXPECT_EQ(plugin.ask(effEditIdle), 0);
    EXPECT_EQ(plugin.ask(effEditClose), 0);
    EXPECT_EQ(plugin.ask(effSetEditKnobMode, 0, 0), 1);
}

TEST_F(HostRequest, LeavesEveryKeyToTheHost) {
    for (const VstInt32 request : {effEditKeyDown, effEditKeyUp}) {
        GuardedText buffer;
        EXPECT_EQ(plugin.ask(request, 65, 1, buffer.data(), 1.0F), 0) << request;
        EXPECT_EQ(buffer.touched(), 0U) << request;
    }
}

} // namespace
