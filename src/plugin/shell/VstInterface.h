// The plug-in object as the host sees it: translates the host's calls for an engine, and owns no
// synthesis state of its own.
#pragma once

#include "vst2/audioeffectx.h"

#include <string>

namespace zelvatone {

class SynthEngine;
class SynthParameter;
class SynthProgram;

// Audio thread: processEvents, processReplacing. User-interface thread: all else; setParameter and
// getParameter on whatever thread the host plays automation. No locks are taken.
//
// Parameter requests below 0 or above the parameter count are ignored. One that equals the count is
// let through to the checked access and ends the process; so is a negative program index given to
// getProgramNameIndexed.
class VstInterface : public AudioEffectX {
public:
    // Fronts `engine`, which is not owned and stays allocated when the plug-in object goes. An
    // engine without a program ends the process. `chunksFlag`: whether the host shall save state
    // as bytes rather than as parameter values.
    VstInterface(audioMasterCallback audioMaster, SynthEngine* engine, VstInt32 uniqueID,
                 bool chunksFlag);

    void setSampleRate(float rate) override;
    void setBlockSize(VstInt32 size) override;
    void processReplacing(float** inputs, float** outputs, VstInt32 sampleFrames) override;
    void setParameter(VstInt32 index, float value) override;
    float getParameter(VstInt32 index) override;
    void setProgram(VstInt32 index) override;
    void setProgramName(char* name) override;
    void getProgramName(char* name) override;
    void getParameterLabel(VstInt32 index, char* label) override;
    void getParameterDisplay(VstInt32 index, char* text) override;
    void getParameterName(VstInt32 index, char* text) override;
    VstInt32 getChunk(void** data, bool isPreset) override;
    VstInt32 setChunk(void* data, VstInt32 byteSize, bool isPreset) override;
    bool getProgramNameIndexed(VstInt32 category, VstInt32 index, char* text) override;
    bool getOutputProperties(VstInt32 index, VstPinProperties* properties) override;
    VstInt32 getNumMidiInputChannels() override;
    VstInt32 getNumMidiOutputChannels() override;
    VstInt32 processEvents(VstEvents* events) override;
    bool getEffectName(char* name) override;
    bool getVendorString(char* text) override;
    bool getProductString(char* text) override;
    VstInt32 getVendorVersion() override;
    VstInt32 canDo(char* text) override;

    // Not offered to hosts; prints a line and returns false.
    virtual bool copyProgram(VstInt32 destination);

    SynthEngine* getSynthEngine() const { return engine; }

protected:
    SynthEngine* engine; // not owned
    VstInt32 programCount = 0;
    VstInt32 parameterCount = 0;

private:
    bool isIgnoredParameter(VstInt32 index) const;
    SynthParameter& currentParameter(VstInt32 index) const;
};

} // namespace zelvatone
