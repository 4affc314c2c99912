// Base of a plug-in object: owns the AEffect record and turns the host's requests 0 to 24 into
// virtual calls. Every default result is that of a plug-in that does nothing.
#pragma once

#include "vst2/aeffect.h"

class AEffEditor;

class AudioEffect {
public:
    // Fills the record. `audioMaster` may be null (no host services then).
    AudioEffect(audioMasterCallback audioMaster, VstInt32 numPrograms, VstInt32 numParams);
    // Deletes the editor.
    virtual ~AudioEffect();
    AudioEffect(const AudioEffect&) = delete;
    AudioEffect& operator=(const AudioEffect&) = delete;

    // Handles one host request and returns its result: 0 for a request without a meaning, and for
    // one that lacks the buffer it is to fill. User-interface thread, except the audio requests.
    virtual VstIntPtr dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                 float opt);

    virtual void open() {}
    virtual void close() {}
    virtual void suspend() {}                                      // switched off
    virtual void resume() {}                                       // switched on
    virtual void setSampleRate(float rate) { sampleRate = rate; }  // Hz
    virtual void setBlockSize(VstInt32 size) { blockSize = size; } // samples, the largest to come

    // Audio thread. Replaces `sampleFrames` samples of every output channel.
    virtual void processReplacing(float** inputs, float** outputs, VstInt32 sampleFrames) = 0;
    // Audio thread. Double precision; announced by effFlagsCanDoubleReplacing only.
    virtual void processDoubleReplacing(double** /*inputs*/, double** /*outputs*/,
                                        VstInt32 /*sampleFrames*/) {}

    // Parameters by index, as normalised values 0 to 1.
    virtual void setParameter(VstInt32 /*index*/, float /*value*/) {}
    virtual float getParameter(VstInt32 /*index*/) { return 0.0F; }
    // Sets the parameter and tells the host, for changes that start in the editor.
    virtual void setParameterAutomated(VstInt32 index, float value);

    // Any thread, as is the next: hosts select programs on one and ask on another.
    virtual VstInt32 getProgram();
    virtual void setProgram(VstInt32 program);
    virtual void setProgramName(char* /*name*/) {}
    // The text operations fill the caller's buffer, terminator included, up to the length that
    // the interface fixes.
    virtual void getProgramName(char* name) { *name = '\0'; }
    virtual void getParameterLabel(VstInt32 /*index*/, char* label) { *label = '\0'; }
    virtual void getParameterDisplay(VstInt32 /*index*/, char* text) { *text = '\0'; }
    virtual void getParameterName(VstInt32 /*index*/, char* text) { *text = '\0'; }

    // State as one block of bytes: returns its size, 0 for none.
    virtual VstInt32 getChunk(void** /*data*/, bool /*isPreset*/) { return 0; }
    virtual VstInt32 setChunk(void* /*data*/, VstInt32 /*byteSize*/, bool /*isPreset*/) {
        return 0;
    }

    // Registers the editor, which is owned from then on, and announces it. Null withdraws it.
    void setEditor(AEffEditor* newEditor);
    AEffEditor* getEditor() { return editor; }
    AEffect* getAeffect() { return &cEffect; }
    float getSampleRate() const { return sampleRate; }
    VstInt32 getBlockSize() const { return blockSize; }

protected:
    void setUniqueID(VstInt32 id) { cEffect.uniqueID = id; }
    void setNumInputs(VstInt32 inputs) { cEffect.numInputs = inputs; }
    void setNumOutputs(VstInt32 outputs) { cEffect.numOutputs = outputs; }
    void canProcessReplacing(bool state = true) { setFlag(effFlagsCanReplacing, state); }
    void programsAreChunks(bool state = true) { setFlag(effFlagsProgramChunks, state); }
    void setFlag(VstInt32 flag, bool state);

    audioMasterCallback audioMaster;
    AEffEditor* editor = nullptr;
    float sampleRate = 44100.0F; // Hz; what holds until the host says otherwise
    VstInt32 blockSize = 1024;   // samples; the same
    VstInt32 curProgram = 0;
    AEffect cEffect{};

private:
    VstIntPtr setProgramWithin(VstIntPtr program);
    VstIntPtr mainsChanged(bool on);
    VstIntPtr dispatchText(VstInt32 opcode, VstInt32 index, char* text);
    VstIntPtr dispatchEditor(VstInt32 opcode, void* ptr);
};

// Copies at most `length` characters of `source` to `target`, fills the rest with zeros and
// terminates at index `length`; writes length + 1 characters in all.
void vstCopyText(char* target, const char* source, int length);
