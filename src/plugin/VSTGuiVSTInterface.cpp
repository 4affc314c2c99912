#include "plugin/VSTGuiVSTInterface.h"

#include "vstguieditor/vstguieditor.h"

#include <new>

namespace zelvatone {

VSTGuiVSTInterface::VSTGuiVSTInterface(audioMasterCallback audioMaster, SynthEngine* engine,
                                       VstInt32 uniqueID)
    : VstInterface(audioMaster, engine, uniqueID, false) {
    // The editor registers itself; without memory for it the plug-in goes without.
    editor = new (std::nothrow) VSTGuiEditor(this);
}

VSTGuiVSTInterface::~VSTGuiVSTInterface() {
    if (editor != nullptr && editor->isOpen()) {
        editor->close();
    }
}

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
