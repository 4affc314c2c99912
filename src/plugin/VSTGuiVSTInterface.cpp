#include "plugin/VSTGuiVSTInterface.h"

#include "vst2/aeffeditor.h"

namespace zelvatone {

VSTGuiVSTInterface::VSTGuiVSTInterface(audioMasterCallback audioMaster, SynthEngine* engine,
                                       VstInt32 uniqueID)
    : VstInterface(audioMaster, engine, uniqueID, false) {}

void VSTGuiVSTInterface::setParameter(VstInt32 index, float value) {
    if (editor != nullptr) {
        editor->setParameter(index, value);
    }
    VstInterface::setParameter(index, value);
}

void VSTGuiVSTInterface::setProgram(VstInt32 index) {
    VstInterface::setProgram(index);
    if (editor == nullptr || engine == nullptr) {
        return;
    }
    for (VstInt32 i = 0; i < parameterCount; ++i) {
        editor->setParameter(i, getParameter(i));
    }
}

} // namespace zelvatone
