#include "plugin/shell/VstInterface.h"

#include "engine/SynthEngine.h"
#include "params/CheckedAccess.h"
#include "params/SharedValue.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

namespace zelvatone {

namespace {

VstInt32 sizeOf(const ProgramBank& programs) {
    return static_cast<VstInt32>(programs.size());
}

VstInt32 firstParameterCount(const SynthEngine& engine) {
    return static_cast<VstInt32>(checkedAt(engine.programs, 0).parameters.size());
}

void copyName(const ProgramName& name, char* text) {
    vstCopyText(text, name.characters().data(), kVstMaxProgNameLen);
}

void handMidiTo(SynthEngine& engine, const VstMidiEvent& event) {
    const auto byte = [&event](int i) { return static_cast<unsigned char>(event.midiData[i]); };
    // The low four status bits are the channel: all sixteen play the same instrument.
    engine.processMidi(byte(0) & 0xF0, byte(1) & 0x7F, byte(2) & 0x7F, event.deltaFrames);
}

} // namespace

VstInterface::VstInterface(audioMasterCallback audioMaster, SynthEngine* engine, VstInt32 uniqueID,
                           bool chunksFlag)
    : AudioEffectX(audioMaster, sizeOf(engine->programs), firstParameterCount(*engine)),
      engine(engine) {
    if (!engine->programs.empty()) {
        engine->setProgram(0);
        curProgram = 0;
    }
    programCount = sizeOf(engine->programs);
    parameterCount = firstParameterCount(*engine);
    if (audioMaster != nullptr) {
        setNumInputs(engine->numInputs);
        setNumOutputs(engine->numOutputs);
        canProcessReplacing(true);
        programsAreChunks(chunksFlag);
        isSynth(true);
        setUniqueID(uniqueID);
    }
}

void VstInterface::setSampleRate(float rate) {
    AudioEffectX::setSampleRate(rate);
    engine->setSampleRate(rate);
}

void VstInterface::setBlockSize(VstInt32 size) {
    AudioEffectX::setBlockSize(size);
}

void VstInterface::processReplacing(float** inputs, float** outputs, VstInt32 sampleFrames) {
    const VstTimeInfo* timeInfo = getTimeInfo(kVstTempoValid);
    if (timeInfo != nullptr && (timeInfo->flags & kVstTempoValid) != 0) {
        engine->setTempo(static_cast<float>(timeInfo->tempo));
    }
    engine->render(inputs, outputs, sampleFrames);
}

VstInt32 VstInterface::processEvents(VstEvents* events) {
    if (events == nullptr || events->numEvents < 1) {
        return 1;
    }
    // The record declares two pointers and the host writes as many as there are events. A subscript
    // of that array beyond 1 would be undefined; a pointer walks on.
    const VstEvent* const* list = events->events;
    for (VstInt32 i = 0; i < events->numEvents; ++i) {
        const VstEvent* event = list[i];
        if (event != nullptr && event->type == kVstMidiType) {
            handMidiTo(*engine, *reinterpret_cast<const VstMidiEvent*>(event));
        }
    }
    return 1;
}

bool VstInterface::isIgnoredParameter(VstInt32 index) const {
    // Compares with "greater than": the count itself goes on to the checked access.
    return index < 0 || index > firstParameterCount(*engine);
}

SynthParameter& VstInterface::currentParameter(VstInt32 index) const {
    return *checkedAt(loadShared(engine->currentProgram)->parameters, index);
}

void VstInterface::setParameter(VstInt32 index, float value) {
    if (isIgnoredParameter(index)) {
        return;
    }
    SynthParameter& parameter = currentParameter(index);
    parameter.setValue(parameter.toUnits(parameter.min, parameter.max, value));
}

float VstInterface::getParameter(VstInt32 index) {
    if (isIgnoredParameter(index)) {
        return 0.0F;
    }
    const SynthParameter& parameter = currentParameter(index);
    return parameter.toNormalised(parameter.min, parameter.max, loadShared(parameter.value));
}

void VstInterface::setProgram(VstInt32 index) {
    if (index < 0 || index >= sizeOf(engine->programs)) {
        return;
    }
    engine->setProgram(index);
    storeShared(curProgram, index);
}

void VstInterface::setProgramName(char* name) {
    char cut[kVstMaxProgNameLen + 1];
    vstCopyText(cut, name, kVstMaxProgNameLen);
    loadShared(engine->currentProgram)->name = cut;
}

void VstInterface::getProgramName(char* name) {
    copyName(loadShared(engine->currentProgram)->name, name);
}

bool VstInterface::getProgramNameIndexed(VstInt32 /*category*/, VstInt32 index, char* text) {
    if (index >= sizeOf(engine->programs)) {
        return false;
    }
    copyName(checkedAt(engine->programs, index).name, text);
    return true;
}

void VstInterface::getParameterLabel(VstInt32 index, char* label) {
    if (!isIgnoredParameter(index)) {
        vstCopyText(label, currentParameter(index).label.c_str(), kVstMaxParamStrLen);
    }
}

void VstInterface::getParameterDisplay(VstInt32 index, char* text) {
    if (!isIgnoredParameter(index)) {
        vstCopyText(text, currentParameter(index).getDisplay().c_str(), kVstMaxParamStrLen);
    }
}

void VstInterface::getParameterName(VstInt32 index, char* text) {
    if (!isIgnoredParameter(index)) {
        vstCopyText(text, currentParameter(index).name.c_str(), kVstMaxParamStrLen);
    }
}

VstInt32 VstInterface::getChunk(void** data, bool isPreset) {
    return engine->getChunk(data, isPreset);
}

VstInt32 VstInterface::setChunk(void* data, VstInt32 byteSize, bool isPreset) {
    return engine->setChunk(data, byteSize, isPreset);
}

bool VstInterface::getOutputProperties(VstInt32 index, VstPinProperties* properties) {
    if (index < 0 || index >= engine->numOutputs) {
        return false;
    }
    const std::string label = "Vstx " + std::to_string(index + 1);
    vstCopyText(properties->label, label.c_str(), kVstMaxLabelLen - 1);
    // Outputs come in one stereo pair; a third one would stand alone.
    properties->flags = index < 2 ? kVstPinIsActive | kVstPinIsStereo : kVstPinIsActive;
    return true;
}

VstInt32 VstInterface::getNumMidiInputChannels() {
    return 1;
}

VstInt32 VstInterface::getNumMidiOutputChannels() {
    return 0;
}

bool VstInterface::getEffectName(char* name) {
    vstCopyText(name, engine->effectName, kVstMaxEffectNameLen);
    return true;
}

bool VstInterface::getVendorString(char* text) {
    vstCopyText(text, engine->vendorName, kVstMaxVendorStrLen);
    return true;
}

bool VstInterface::getProductString(char* text) {
    vstCopyText(text, engine->productName, kVstMaxProductStrLen);
    return true;
}

VstInt32 VstInterface::getVendorVersion() {
    return engine->vendorVersion;
}

VstInt32 VstInterface::canDo(char* text) {
    const std::string_view capability = text;
    return capability == "receiveVstEvents" || capability == "receiveVstMidiEvent" ? 1 : -1;
}

bool VstInterface::copyProgram(VstInt32 /*destination*/) {
    std::printf("STUB: VstInterface::copyProgram\n");
    return false;
}

} // namespace zelvatone
