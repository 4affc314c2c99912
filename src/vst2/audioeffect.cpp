#include "vst2/audioeffect.h"

#include "vst2/aeffeditor.h"

#include <atomic>
#include <cstddef>
#include <cstring>
#include <limits>

namespace {

AudioEffect* objectOf(AEffect* effect) {
    return static_cast<AudioEffect*>(effect->object);
}

// The calls that the host makes through the record. All are noexcept: an exception must not
// unwind into a host that may be written in another language, so it ends the process here.

VstIntPtr dispatchEffect(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                         void* ptr, float opt) noexcept {
    AudioEffect* object = objectOf(effect);
    if (opcode != effClose) {
        return object->dispatcher(opcode, index, value, ptr, opt);
    }
    object->dispatcher(opcode, index, value, ptr, opt);
    delete object;
    return 1;
}

void setParameterOfEffect(AEffect* effect, VstInt32 index, float value) noexcept {
    objectOf(effect)->setParameter(index, value);
}

float getParameterOfEffect(AEffect* effect, VstInt32 index) noexcept {
    return objectOf(effect)->getParameter(index);
}

// The accumulating entry that the interface withdrew: hosts that still call it get silence added.
void accumulateNothing(AEffect*, float**, float**, VstInt32) noexcept {}

void processReplacingOfEffect(AEffect* effect, float** inputs, float** outputs,
                              VstInt32 sampleFrames) noexcept {
    objectOf(effect)->processReplacing(inputs, outputs, sampleFrames);
}

void processDoubleOfEffect(AEffect* effect, double** inputs, double** outputs,
                           VstInt32 sampleFrames) noexcept {
    objectOf(effect)->processDoubleReplacing(inputs, outputs, sampleFrames);
}

} // namespace

AudioEffect::AudioEffect(audioMasterCallback audioMaster, VstInt32 numPrograms, VstInt32 numParams)
    : audioMaster(audioMaster) {
    // The host may copy the record as bytes, so its padding is made known too.
    std::memset(static_cast<void*>(&cEffect), 0, sizeof cEffect);
    cEffect.magic = kEffectMagic;
    cEffect.dispatcher = dispatchEffect;
    cEffect.process = accumulateNothing;
    cEffect.setParameter = setParameterOfEffect;
    cEffect.getParameter = getParameterOfEffect;
    cEffect.numPrograms = numPrograms;
    cEffect.numParams = numParams;
    cEffect.numInputs = 1; // what a plug-in has that says nothing else
    cEffect.numOutputs = 1;
    cEffect.ioRatio = 1.0F;
    cEffect.object = this;
    cEffect.uniqueID = vstFourCharacters('N', 'o', 'E', 'f'); // likewise
    cEffect.version = 1;
    cEffect.processReplacing = processReplacingOfEffect;
    cEffect.processDoubleReplacing = processDoubleOfEffect;
}

AudioEffect::~AudioEffect() {
    delete editor;
}

void AudioEffect::setEditor(AEffEditor* newEditor) {
    editor = newEditor;
    setFlag(effFlagsHasEditor, newEditor != nullptr);
}

void AudioEffect::setFlag(VstInt32 flag, bool state) {
    cEffect.flags = state ? (cEffect.flags | flag) : (cEffect.flags & ~flag);
}

void AudioEffect::setParameterAutomated(VstInt32 index, float value) {
    setParameter(index, value);
    if (audioMaster != nullptr) {
        audioMaster(&cEffect, audioMasterAutomate, index, 0, nullptr, value);
    }
}

VstInt32 AudioEffect::getProgram() {
    return std::atomic_ref(curProgram).load(std::memory_order_relaxed);
}

void AudioEffect::setProgram(VstInt32 program) {
    std::atomic_ref(curProgram).store(program, std::memory_order_relaxed);
}

VstIntPtr AudioEffect::setProgramWithin(VstIntPtr program) {
    if (program < cEffect.numPrograms) {
        // A 64-bit value far below zero stays negative rather than wrapping into the bank.
        constexpr VstIntPtr kLowest = std::numeric_limits<VstInt32>::min();
        setProgram(static_cast<VstInt32>(program < kLowest ? kLowest : program));
    }
    return 0;
}

VstIntPtr AudioEffect::mainsChanged(bool on) {
    if (on) {
        resume();
    } else {
        suspend();
    }
    return 0;
}

VstIntPtr AudioEffect::dispatchText(VstInt32 opcode, VstInt32 index, char* text) {
    if (text == nullptr) {
        return 0;
    }
    switch (opcode) {
    case effSetProgramName:
        setProgramName(text);
        break;
    case effGetProgramName:
        getProgramName(text);
        break;
    case effGetParamLabel:
        getParameterLabel(index, text);
        break;
    case effGetParamDisplay:
        getParameterDisplay(index, text);
        break;
    default: // effGetParamName
        getParameterName(index, text);
        break;
    }
    return 0;
}

VstIntPtr AudioEffect::dispatchEditor(VstInt32 opcode, void* ptr) {
    if (editor == nullptr) {
        return 0;
    }
    switch (opcode) {
    case effEditGetRect:
        return ptr != nullptr && editor->getRect(static_cast<ERect**>(ptr)) ? 1 : 0;
    case effEditOpen:
        return editor->open(ptr) ? 1 : 0;
    case effEditClose:
        editor->close();
        return 0;
    default: // effEditIdle
        editor->idle();
        return 0;
    }
}

VstIntPtr AudioEffect::dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                  float opt) {
    switch (opcode) {
    case effOpen:
        open();
        return 0;
    case effClose:
        close();
        return 0;
    case effSetProgram:
        return setProgramWithin(value);
    case effGetProgram:
        return getProgram();
    case effSetProgramName:
    case effGetProgramName:
    case effGetParamLabel:
    case effGetParamDisplay:
    case effGetParamName:
        return dispatchText(opcode, index, static_cast<char*>(ptr));
    case effSetSampleRate:
        setSampleRate(opt);
        return 0;
    case effSetBlockSize:
        setBlockSize(static_cast<VstInt32>(value));
        return 0;
    case effMainsChanged:
        return mainsChanged(value != 0);
    case effEditGetRect:
    case effEditOpen:
    case effEditClose:
    case effEditIdle:
        return dispatchEditor(opcode, ptr);
    case effIdentify:
        return vstFourCharacters('N', 'v', 'E', 'f');
    case effGetChunk:
        return ptr == nullptr ? 0 : getChunk(static_cast<void**>(ptr), index != 0);
    case effSetChunk:
        return setChunk(ptr, static_cast<VstInt32>(value), index != 0);
    default:
        return 0;
    }
}

void vstCopyText(char* target, const char* source, int length) {
    const auto count = static_cast<std::size_t>(length);
    std::strncpy(target, source, count);
    target[count] = '\0';
}
