// A host that loads the plug-in's library, and writes down what an editor tells it.
#pragma once

#include "vst2/aeffectx.h"

#include <functional>
#include <string>
#include <vector>

namespace zelvatone::test {

// What a knob tells: audioMasterAutomate with the normalised value, audioMasterBeginEdit or
// audioMasterEndEdit with 0.
struct HostCall {
    VstInt32 opcode;
    VstInt32 parameter;
    float value;
};

// One instance of the plug-in, from its creation to effClose.
class Plugin {
public:
    Plugin();
    ~Plugin();
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    VstIntPtr dispatch(VstInt32 opcode, VstIntPtr value = 0, void* ptr = nullptr);
    bool openEditor(void* parent) { return dispatch(effEditOpen, 0, parent) == 1; }
    void closeEditor() { dispatch(effEditClose); }
    void idle() { dispatch(effEditIdle); }
    void setProgram(VstInt32 program) { dispatch(effSetProgram, program); }
    void setParameter(VstInt32 index, float value) { effect->setParameter(effect, index, value); }
    float parameter(VstInt32 index) { return effect->getParameter(effect, index); }
    std::string parameterDisplay(VstInt32 index);
    // Plays a block of a few hundred samples, with a note now and then.
    void render();
    VstInt32 flags() const { return effect->flags; }

    // The calls of the given kind.
    std::vector<HostCall> callsOf(VstInt32 opcode) const;

    std::vector<HostCall> calls;                 // in their order
    std::function<void(const HostCall&)> onCall; // called from within the plug-in's call

private:
    static VstIntPtr callback(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                              void* ptr, float opt);

    AEffect* effect;
    int blocks = 0;
};

} // namespace zelvatone::test
