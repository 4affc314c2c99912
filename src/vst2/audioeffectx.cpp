#include "vst2/audioeffectx.h"

#include "vst2/aeffeditor.h"

void AudioEffectX::resume() {
    if ((cEffect.flags & effFlagsIsSynth) != 0) {
        wantEvents();
    }
}

VstPlugCategory AudioEffectX::getPlugCategory() {
    return (cEffect.flags & effFlagsIsSynth) != 0 ? kPlugCategSynth : kPlugCategUnknown;
}

VstIntPtr AudioEffectX::callHost(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr) {
    return audioMaster == nullptr ? 0 : audioMaster(&cEffect, opcode, index, value, ptr, 0.0F);
}

void AudioEffectX::wantEvents() {
    callHost(audioMasterWantMidi, 0, 1);
}

VstTimeInfo* AudioEffectX::getTimeInfo(VstInt32 filter) {
    // The interface passes the record's address as the result.
    return reinterpret_cast<VstTimeInfo*>(callHost(audioMasterGetTime, 0, filter));
}

bool AudioEffectX::canHostDo(char* text) {
    return callHost(audioMasterCanDo, 0, 0, text) != 0;
}

bool AudioEffectX::sizeWindow(VstInt32 width, VstInt32 height) {
    return callHost(audioMasterSizeWindow, width, height) != 0;
}

bool AudioEffectX::beginEdit(VstInt32 index) {
    return callHost(audioMasterBeginEdit, index) != 0;
}

bool AudioEffectX::endEdit(VstInt32 index) {
    return callHost(audioMasterEndEdit, index) != 0;
}

VstIntPtr AudioEffectX::dispatchNames(VstInt32 opcode, char* text) {
    if (text == nullptr) {
        return 0;
    }
    switch (opcode) {
    case effGetEffectName:
        return getEffectName(text) ? 1 : 0;
    case effGetVendorString:
        return getVendorString(text) ? 1 : 0;
    default: // effGetProductString
        return getProductString(text) ? 1 : 0;
    }
}

VstIntPtr AudioEffectX::dispatchKey(VstInt32 opcode, VstInt32 index, VstIntPtr value, float opt) {
    if (editor == nullptr) {
        return 0;
    }
    // The modifier bits travel as a float; a value outside 0..255 sets none.
    const auto modifier = opt >= 0.0F && opt < 256.0F ? static_cast<unsigned char>(opt)
                                                      : static_cast<unsigned char>(0);
    VstKeyCode key{index, static_cast<unsigned char>(value), modifier};
    const bool used = opcode == effEditKeyDown ? editor->onKeyDown(key) : editor->onKeyUp(key);
    return used ? 1 : 0;
}

VstIntPtr AudioEffectX::dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                   float opt) {
    if (opcode < effProcessEvents) {
        return AudioEffect::dispatcher(opcode, index, value, ptr, opt);
    }
    char* text = static_cast<char*>(ptr);
    switch (opcode) {
    case effProcessEvents:
        return processEvents(static_cast<VstEvents*>(ptr));
    case effCanBeAutomated:
        return canParameterBeAutomated(index) ? 1 : 0;
    case effString2Parameter:
        return string2parameter(index, text) ? 1 : 0;
    case effGetProgramNameIndexed:
        return text != nullptr && getProgramNameIndexed(static_cast<VstInt32>(value), index, text);
    case effGetOutputProperties:
        return ptr != nullptr && getOutputProperties(index, static_cast<VstPinProperties*>(ptr));
    case effGetPlugCategory:
        return getPlugCategory();
    case effGetEffectName:
    case effGetVendorString:
    case effGetProductString:
        return dispatchNames(opcode, text);
    case effGetVendorVersion:
        return getVendorVersion();
    case effCanDo:
        return text == nullptr ? 0 : canDo(text);
    case effGetVstVersion:
        return getVstVersion();
    case effEditKeyDown:
    case effEditKeyUp:
        return dispatchKey(opcode, index, value, opt);
    case effSetEditKnobMode:
        return editor != nullptr && editor->setKnobMode(static_cast<VstInt32>(value)) ? 1 : 0;
    case effGetCurrentMidiProgram:
        return -1;
    case effGetSpeakerArrangement: // no arrangement: both of the host's pointers become null
        if (value != 0) {
            *reinterpret_cast<void**>(value) = nullptr;
        }
        if (ptr != nullptr) {
            *static_cast<void**>(ptr) = nullptr;
        }
        return 0;
    case effSetTotalSampleToProcess:
        return value;
    case effGetNumMidiInputChannels:
        return getNumMidiInputChannels();
    case effGetNumMidiOutputChannels:
        return getNumMidiOutputChannels();
    default:
        return 0;
    }
}
