// The plug-in object that keeps an editor in step with the engine.
#pragma once

#include "plugin/shell/VstInterface.h"

namespace zelvatone {

class VSTGuiVSTInterface final : public VstInterface {
public:
    // Makes the editor, which stays closed.
    VSTGuiVSTInterface(audioMasterCallback audioMaster, SynthEngine* engine, VstInt32 uniqueID);
    // Closes a window that the host has left open, while the plug-in object is still whole. The
    // base class deletes the editor.
    ~VSTGuiVSTInterface() override;
    VSTGuiVSTInterface(const VSTGuiVSTInterface&) = delete;
    VSTGuiVSTInterface& operator=(const VSTGuiVSTInterface&) = delete;

    // Tells the editor first, then stores the value: a change from the host moves the knob at once,
    // while the text beside it is still that of the old value.
    void setParameter(VstInt32 index, float value) override;
    // Afterwards sends every parameter to the editor, also when no program has that index.
    void setProgram(VstInt32 index) override;

    // For hosts of other interfaces, which tell a scale: the editor's window is `scale` times as
    // large from its next opening on; see VSTGuiEditor::setScale. User-interface thread.
    void setEditorScale(double scale);
};

} // namespace zelvatone
