// The plug-in base with the requests 25 to 79 and the host services that came with version 2 of
// the interface.
#pragma once

#include "vst2/aeffectx.h"
#include "vst2/audioeffect.h"

class AudioEffectX : public AudioEffect {
public:
    using AudioEffect::AudioEffect;

    VstIntPtr dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                         float opt) override;
    // A synth asks the host for MIDI each time it is switched on.
    void resume() override;

    virtual bool canParameterBeAutomated(VstInt32 /*index*/) { return true; }
    virtual bool string2parameter(VstInt32 /*index*/, char* /*text*/) { return false; }
    // Writes the name of program `index`; returns false without such a program.
    virtual bool getProgramNameIndexed(VstInt32 /*category*/, VstInt32 /*index*/, char* /*text*/) {
        return false;
    }
    virtual bool getOutputProperties(VstInt32 /*index*/, VstPinProperties* /*properties*/) {
        return false;
    }
    virtual VstInt32 getNumMidiInputChannels() { return 0; }
    virtual VstInt32 getNumMidiOutputChannels() { return 0; }
    // Audio thread, before the processReplacing that the events belong to.
    virtual VstInt32 processEvents(VstEvents* /*events*/) { return 0; }
    virtual bool getEffectName(char* /*name*/) { return false; }
    virtual bool getVendorString(char* /*text*/) { return false; }
    virtual bool getProductString(char* /*text*/) { return false; }
    virtual VstInt32 getVendorVersion() { return 0; }
    // 1 for a capability that is there, -1 for one that is not, 0 for one that is not known.
    virtual VstInt32 canDo(char* /*text*/) { return 0; }
    virtual VstInt32 getVstVersion() { return kVstVersion; }
    virtual VstPlugCategory getPlugCategory();

    // Host services. Each returns null, 0 or false without a host.
    VstTimeInfo* getTimeInfo(VstInt32 filter); // filter: VstTimeInfoFlags wanted; the host's record
    bool canHostDo(char* text);
    bool sizeWindow(VstInt32 width, VstInt32 height); // pixels
    bool beginEdit(VstInt32 index);                   // a gesture on a parameter starts
    bool endEdit(VstInt32 index);

protected:
    void isSynth(bool state = true) { setFlag(effFlagsIsSynth, state); }
    void wantEvents();

private:
    VstIntPtr callHost(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0,
                       void* ptr = nullptr);
    VstIntPtr dispatchNames(VstInt32 opcode, char* text);
    VstIntPtr dispatchKey(VstInt32 opcode, VstInt32 index, VstIntPtr value, float opt);
};

// Say that this header has been included, and that it knows gestures and keys.
#ifndef __audioeffectx__
#define __audioeffectx__ // NOLINT(bugprone-reserved-identifier): the name that toolkits look for
#endif
#define VST_2_1_EXTENSIONS 1
