// The least that a plug-in needs, for those that differ in one point.
#pragma once

#include "vst2/audioeffectx.h"

#include <algorithm>

class SmallPlugin : public AudioEffectX {
public:
    SmallPlugin(audioMasterCallback host, bool isInstrument, VstInt32 parameters = 0)
        : AudioEffectX(host, 1, parameters) {
        setNumInputs(isInstrument ? 0 : 2);
        setNumOutputs(2);
        canProcessReplacing();
        isSynth(isInstrument);
    }
    void processReplacing(float** /*inputs*/, float** outputs, VstInt32 frames) override {
        std::fill_n(outputs[0], frames, 0.0F);
        std::fill_n(outputs[1], frames, 0.0F);
    }
};

extern "C" __attribute__((visibility("default"))) AEffect* VSTPluginMain(audioMasterCallback host);
