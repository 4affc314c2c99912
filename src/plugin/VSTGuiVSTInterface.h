// The plug-in object that keeps an editor in step with the engine.
#pragma once

#include "plugin/VstInterface.h"

namespace zelvatone {

class VSTGuiVSTInterface final : public VstInterface {
public:
    VSTGuiVSTInterface(audioMasterCallback audioMaster, SynthEngine* engine, VstInt32 uniqueID);

    // Tells the editor first, then stores the value: a change from the host moves the knob at once,
    // while the text beside it is still that of the old value.
    void setParameter(VstInt32 index, float value) override;
    // Afterwards sends every parameter to the editor, also when there is no such program.
    void setProgram(VstInt32 index) override;
};

} // namespace zelvatone
