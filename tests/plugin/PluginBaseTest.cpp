// The bases by themselves: what a plug-in is that says nothing, and the services that a plug-in
// asks of its host.
#include "tests/plugin/HostedEffect.h"
#include "tests/plugin/RecordingHost.h"
#include "vst2/aeffeditor.h"
#include "vst2/audioeffectx.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class BarePlugin final : public AudioEffectX {
public:
    explicit BarePlugin(audioMasterCallback audioMaster) : AudioEffectX(audioMaster, 2, 3) {}

    void processReplacing(float**, float**, VstInt32) override {}
};

class PluginBase : public ::testing::Test {
protected:
    RecordingHost host;
    BarePlugin plugin{RecordingHost::callback};
    BarePlugin alone{nullptr};
    HostedEffect effect{plugin.getAeffect()};
};

TEST_F(PluginBase, FillsTheRecordWithTheUsual) {
    const AEffect& record = *effect.record;
    EXPECT_EQ(record.magic, 0x56737450);    // V s t P
    EXPECT_EQ(record.uniqueID, 0x4E6F4566); // N o E f
    EXPECT_EQ(record.version, 1);
    EXPECT_EQ(record.numPrograms, 2);
    EXPECT_EQ(record.numParams, 3);
    EXPECT_EQ(record.numInputs, 1);
    EXPECT_EQ(record.numOutputs, 1);
    EXPECT_EQ(record.flags, 0);
    EXPECT_EQ(record.object, &plugin);
    EXPECT_TRUE(host.calls.empty());
}

TEST_F(PluginBase, IsNotASynthAndWantsNoMidi) {
    EXPECT_EQ(effect.ask(effGetPlugCategory), 0);
    EXPECT_EQ(effect.ask(effMainsChanged, 0, 1), 0);
    EXPECT_TRUE(host.calls.empty());
}

TEST_F(PluginBase, RemembersTheProgramThatTheHostSelects) {
    effect.ask(effSetProgram, 0, 1);
    EXPECT_EQ(effect.ask(effGetProgram), 1);
    effect.ask(effSetProgram, 0, 2); // beyond its two
    EXPECT_EQ(effect.ask(effGetProgram), 1);
}

TEST_F(PluginBase, WritesEmptyTexts) {
    for (const VstInt32 request :
         {effGetProgramName, effGetParamName, effGetParamLabel, effGetParamDisplay}) {
        char text[] = "left over";
        EXPECT_EQ(effect.ask(request, 0, 0, text), 0) << request;
        EXPECT_STREQ(text, "") << request;
    }
}

TEST_F(PluginBase, KnowsNoNamesPinsEventsOrCapabilities) {
    char text[] = "receiveVstEvents";
    EXPECT_EQ(effect.ask(effGetEffectName, 0, 0, text), 0);
    EXPECT_EQ(effect.ask(effGetVendorString, 0, 0, text), 0);
    EXPECT_EQ(effect.ask(effGetProductString, 0, 0, text), 0);
    EXPECT_EQ(effect.ask(effGetProgramNameIndexed, 0, 0, text), 0);
    EXPECT_EQ(effect.ask(effCanDo, 0, 0, text), 0);
    EXPECT_STREQ(text, "receiveVstEvents");
    VstPinProperties pins{};
    EXPECT_EQ(effect.ask(effGetOutputProperties, 0, 0, &pins), 0);
    EXPECT_EQ(effect.ask(effProcessEvents), 0);
    EXPECT_EQ(effect.ask(effGetVendorVersion), 0);
    EXPECT_EQ(effect.ask(effGetNumMidiInputChannels), 0);
    EXPECT_EQ(effect.ask(effGetNumMidiOutputChannels), 0);
}

TEST_F(PluginBase, ReportsAnEditorsGestureToTheHost) {
    host.results[audioMasterBeginEdit] = 1;
    EXPECT_TRUE(plugin.beginEdit(5));
    EXPECT_FALSE(plugin.endEdit(6));

    ASSERT_EQ(host.calls.size(), 2U);
    EXPECT_EQ(host.calls[0].opcode, 43);
    EXPECT_EQ(host.calls[0].index, 5);
    EXPECT_EQ(host.calls[0].effect, effect.record);
    EXPECT_EQ(host.calls[1].opcode, 44);
    EXPECT_EQ(host.calls[1].index, 6);
}

TEST_F(PluginBase, AsksTheHostForAnotherWindowSize) {
    host.results[audioMasterSizeWindow] = 1;
    EXPECT_TRUE(plugin.sizeWindow(717, 477));

    ASSERT_EQ(host.calls.size(), 1U);
    EXPECT_EQ(host.calls[0].opcode, 15);
    EXPECT_EQ(host.calls[0].index, 717);
    EXPECT_EQ(host.calls[0].value, 477);
}

TEST_F(PluginBase, AsksTheHostForItsCapabilities) {
    char capability[] = "sizeWindow";
    EXPECT_FALSE(plugin.canHostDo(capability));
    host.results[audioMasterCanDo] = 1;
    EXPECT_TRUE(plugin.canHostDo(capability));

    ASSERT_EQ(host.calls.size(), 2U);
    EXPECT_EQ(host.calls[0].opcode, 37);
    EXPECT_EQ(host.calls[0].ptr, capability);
}

TEST_F(PluginBase, AsksTheHostForTheTime) {
    EXPECT_EQ(plugin.getTimeInfo(kVstPpqPosValid), nullptr);
    const VstTimeInfo time{};
    host.setTime(&time);
    EXPECT_EQ(plugin.getTimeInfo(kVstPpqPosValid), &time);
    EXPECT_EQ(host.calls[0].opcode, 7);
    EXPECT_EQ(host.calls[0].value, 0x200);
}

TEST_F(PluginBase, GetsNoServiceWithoutAHost) {
    char capability[] = "sizeWindow";
    EXPECT_FALSE(alone.beginEdit(0));
    EXPECT_FALSE(alone.endEdit(0));
    EXPECT_FALSE(alone.sizeWindow(1, 1));
    EXPECT_FALSE(alone.canHostDo(capability));
    EXPECT_EQ(alone.getTimeInfo(kVstTempoValid), nullptr);
    alone.setParameterAutomated(0, 0.5F);
    EXPECT_TRUE(host.calls.empty());
}

TEST(EditorBase, IsOpenBetweenOpenAndClose) {
    AEffEditor editor;
    int window = 0;
    EXPECT_FALSE(editor.isOpen());
    EXPECT_FALSE(editor.open(&window)); // there is nothing to open yet
    EXPECT_TRUE(editor.isOpen());
    editor.close();
    EXPECT_FALSE(editor.isOpen());
}

TEST(EditorBase, HasNoRectangleAndTakesNoInput) {
    AEffEditor editor;
    ERect something{};
    ERect* rect = &something;
    VstKeyCode key{};
    EXPECT_FALSE(editor.getRect(&rect));
    EXPECT_EQ(rect, nullptr);
    EXPECT_FALSE(editor.onKeyDown(key));
    EXPECT_FALSE(editor.onKeyUp(key));
    EXPECT_FALSE(editor.onWheel(1.0F));
    EXPECT_FALSE(editor.setKnobMode(2));
}

TEST(FourCharacters, AreWrittenMostSignificantFirst) {
    EXPECT_EQ(vstFourCharacters('V', 's', 't', 'P'), 0x56737450);
    EXPECT_EQ(static_cast<std::uint32_t>(vstFourCharacters('\xFF', '\x80', '\0', '\1')),
              0xFF800001U);
}

} // namespace
