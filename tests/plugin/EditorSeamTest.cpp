// The seam between the plug-in object and whatever editor registers with it.
#include "tests/plugin/FakeEditor.h"
#include "tests/plugin/ShellTest.h"

#include <gmock/gmock.h>

#include <climits>
#include <limits>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using zelvatone::kAttack;
using zelvatone::kParameterCount;

// Takes away the editor that the plug-in came with.
class PluginWithoutEditor : public ShellTest {
protected:
    PluginWithoutEditor() {
        delete plugin->getEditor();
        plugin->setEditor(nullptr);
    }
};

class EditorSeam : public PluginWithoutEditor {
protected:
    EditorSeam() { plugin->setEditor(editor); }
    ~EditorSeam() override { close(); } // the editor writes into the journal once more

    // The refresh after a program change: all parameters, ascending, with the current values.
    void expectRefresh() {
        ASSERT_EQ(editor->told.size(), static_cast<std::size_t>(kParameterCount));
        for (VstInt32 i = 0; i < kParameterCount; ++i) {
            EXPECT_EQ(editor->told[i].index, i);
            EXPECT_EQ(editor->told[i].value, effect.getParameter(i)) << i;
        }
    }

    std::vector<std::string> journal;
    FakeEditor* editor = new FakeEditor(plugin, journal); // the plug-in's
};

TEST_F(EditorSeam, AnnouncesTheEditor) {
    EXPECT_EQ(effect.record->flags, 0x111);
    EXPECT_EQ(plugin->getEditor(), editor);
}

TEST_F(EditorSeam, TakesTheAnnouncementBackWithTheEditor) {
    plugin->setEditor(nullptr);
    EXPECT_EQ(effect.record->flags, 0x110);
    EXPECT_EQ(effect.ask(effEditOpen), 0);
    EXPECT_THAT(journal, IsEmpty());
    delete editor; // not the plug-in's any more
}

TEST_F(EditorSeam, DeletesTheEditorWithThePlugin) {
    EXPECT_EQ(close(), 1);
    EXPECT_THAT(journal, ElementsAre("deleted"));
}

TEST_F(EditorSeam, TellsTheEditorBeforeTheValueChanges) {
    effect.setParameter(kAttack, 0.0F);
    effect.setParameter(kAttack, 1.0F);

    ASSERT_EQ(editor->told.size(), 2U);
    EXPECT_EQ(editor->told[1].index, kAttack);
    EXPECT_EQ(editor->told[1].value, 1.0F);
    EXPECT_EQ(editor->pluginHad[1], 0.0F);
    EXPECT_EQ(effect.getParameter(kAttack), 1.0F);
}

TEST_F(EditorSeam, TellsTheEditorValuesAsTheHostSentThem) {
    effect.setParameter(kAttack, 1.5F); // stored as 1
    EXPECT_EQ(editor->told[0].value, 1.5F);
}

TEST_F(EditorSeam, TellsTheEditorAlsoWhatThePluginIgnores) {
    for (const VstInt32 index : {-1, kParameterCount + 1}) {
        editor->told.clear();
        effect.setParameter(index, 0.25F);
        ASSERT_EQ(editor->told.size(), 1U) << index;
        EXPECT_EQ(editor->told[0].index, index);
        EXPECT_EQ(editor->told[0].value, 0.25F);
    }
}

TEST_F(EditorSeam, TellsEditorEngineAndHostInThisOrderOfAnEditorsChange) {
    float hostSaw = -1.0F;
    std::size_t editorKnew = 0;
    host.onCall = [&](const HostCall& call) {
        hostSaw = effect.getParameter(call.index);
        editorKnew = editor->told.size();
    };
    plugin->setParameterAutomated(kAttack, 1.0F);

    EXPECT_EQ(editor->pluginHad[0], 0.19F / 1.99F);
    EXPECT_EQ(editorKnew, 1U);
    EXPECT_EQ(hostSaw, 1.0F);
    ASSERT_EQ(host.calls.size(), 1U);
    EXPECT_EQ(host.calls[0].effect, effect.record);
    EXPECT_EQ(host.calls[0].opcode, 0); // audioMasterAutomate
    EXPECT_EQ(host.calls[0].index, kAttack);
    EXPECT_EQ(host.calls[0].value, 0);
    EXPECT_EQ(host.calls[0].ptr, nullptr);
    EXPECT_EQ(host.calls[0].opt, 1.0F);
}

TEST_F(EditorSeam, RefreshesAllParametersAfterAProgramChange) {
    for (VstInt32 i = 0; i < kParameterCount; ++i) {
        engine.programs[2].parameters[i]->setValue(engine.programs[2].parameters[i]->max);
    }
    EXPECT_EQ(effect.ask(effSetProgram, 0, 2), 0);
    expectRefresh();
    EXPECT_EQ(editor->told[kAttack].value, 1.0F);
}

TEST_F(EditorSeam, RefreshesAlsoWhenTheProgramIsRejected) {
    EXPECT_EQ(effect.ask(effSetProgram, 0, -1), 0);
    expectRefresh();
    for (const VstInt32 index : {3, INT_MAX, INT_MIN}) {
        editor->told.clear();
        plugin->setProgram(index);
        expectRefresh();
    }
    EXPECT_EQ(effect.ask(effGetProgram), 0);
}

TEST_F(EditorSeam, ChangesNothingByRefreshing) {
    effect.setParameter(kAttack, 0.75F);
    const float before = effect.getParameter(kAttack);
    plugin->setProgram(-1);
    EXPECT_EQ(effect.getParameter(kAttack), before);
    EXPECT_TRUE(host.calls.empty());
}

TEST_F(EditorSeam, HandsOutTheEditorsRectangle) {
    ERect* rect = nullptr;
    EXPECT_EQ(effect.ask(effEditGetRect, 0, 0, &rect), 1);
    EXPECT_EQ(rect, &editor->window);
    editor->result = false;
    EXPECT_EQ(effect.ask(effEditGetRect, 0, 0, &rect), 0);
    EXPECT_EQ(effect.ask(effEditGetRect), 0); // nowhere to put it
}

TEST_F(EditorSeam, OpensTheEditorInTheHostsWindow) {
    int window = 0;
    EXPECT_EQ(effect.ask(effEditOpen, 0, 0, &window), 1);
    EXPECT_EQ(editor->openedIn, &window);
    editor->result = false;
    EXPECT_EQ(effect.ask(effEditOpen, 0, 0, &window), 0);
}

TEST_F(EditorSeam, ForwardsCloseAndIdleAndReturnsZero) {
    EXPECT_EQ(effect.ask(effEditClose), 0);
    EXPECT_EQ(effect.ask(effEditIdle), 0);
    EXPECT_THAT(journal, ElementsAre("close", "idle"));
}

TEST_F(EditorSeam, ForwardsKeysWithCharacterCodeAndModifier) {
    EXPECT_EQ(effect.ask(effEditKeyDown, 'a', 33, nullptr, 5.0F), 1);
    EXPECT_EQ(editor->key.character, 'a');
    EXPECT_EQ(editor->key.virt, 33);
    EXPECT_EQ(editor->key.modifier, 5);
    EXPECT_EQ(effect.ask(effEditKeyUp, 'b', 34, nullptr, 6.0F), 1);
    EXPECT_EQ(editor->key.character, 'b');
    EXPECT_EQ(editor->key.virt, 34);
    EXPECT_EQ(editor->key.modifier, 6);
    EXPECT_THAT(journal, ElementsAre("down", "up"));

    editor->result = false;
    EXPECT_EQ(effect.ask(effEditKeyDown, 'a'), 0);
    EXPECT_EQ(effect.ask(effEditKeyUp, 'a'), 0);
}

TEST_F(EditorSeam, SurvivesKeysWithNonsenseForAModifier) {
    const float infinity = std::numeric_limits<float>::infinity();
    for (const float modifier : {-1.0F, 256.0F, 1e30F, infinity, -infinity, std::nanf("")}) {
        EXPECT_EQ(effect.ask(effEditKeyDown, 'a', 1, nullptr, modifier), 1) << modifier;
    }
}

TEST_F(EditorSeam, ForwardsTheKnobMode) {
    EXPECT_EQ(effect.ask(effSetEditKnobMode, 0, 2), 1);
    EXPECT_THAT(journal, ElementsAre("knob mode 2"));
    editor->result = false;
    EXPECT_EQ(effect.ask(effSetEditKnobMode, 0, 1), 0);
}

TEST_F(PluginWithoutEditor, ReturnsZeroToEditorRequests) {
    ERect* rect = nullptr;
    EXPECT_EQ(effect.ask(effEditGetRect, 0, 0, &rect), 0);
    EXPECT_EQ(rect, nullptr);
    for (const VstInt32 request : {effEditOpen, effEditClose, effEditIdle, effEditKeyDown,
                                   effEditKeyUp, effSetEditKnobMode}) {
        EXPECT_EQ(effect.ask(request, 65, 1, &rect, 1.0F), 0) << request;
    }
}

TEST_F(PluginWithoutEditor, ChangesParametersAndProgramsAllTheSame) {
    effect.ask(effSetProgram, 0, 1);
    plugin->setParameterAutomated(kAttack, 1.0F);
    EXPECT_EQ(effect.getParameter(kAttack), 1.0F);
    EXPECT_EQ(effect.ask(effGetProgram), 1);
}

} // namespace
