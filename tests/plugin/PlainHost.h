// A host's callback that any thread may call: it keeps nothing and asks nothing of the system.
#pragma once

#include "vst2/aeffectx.h"

// Returns 2400 for audioMasterVersion, a time of 150 beats a minute for audioMasterGetTime, and 0
// for everything else.
inline VstIntPtr plainHostCallback(AEffect* /*effect*/, VstInt32 opcode, VstInt32 /*index*/,
                                   VstIntPtr /*value*/, void* /*ptr*/, float /*opt*/) {
    static constexpr VstTimeInfo kTime = [] {
        VstTimeInfo time{};
        time.tempo = 150.0;
        time.flags = kVstTempoValid;
        return time;
    }();
    switch (opcode) {
    case audioMasterVersion:
        return kVstVersion;
    case audioMasterGetTime:
        return reinterpret_cast<VstIntPtr>(&kTime);
    default:
        return 0;
    }
}
