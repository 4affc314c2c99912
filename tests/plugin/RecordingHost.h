// A host's callback that writes down what a plug-in asks of it.
#pragma once

#include "vst2/aeffectx.h"

#include <functional>
#include <map>
#include <vector>

struct HostCall {
    AEffect* effect;
    VstInt32 opcode;
    VstInt32 index;
    VstIntPtr value;
    void* ptr;
    float opt;
};

// One at a time: the callback has no pointer of its own to tell hosts apart. Returns
// 2400 for audioMasterVersion and 0 for everything else, unless told otherwise.
class RecordingHost {
public:
    RecordingHost();
    ~RecordingHost();
    RecordingHost(const RecordingHost&) = delete;
    RecordingHost& operator=(const RecordingHost&) = delete;

    static VstIntPtr callback(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                              void* ptr, float opt);

    // The host's time from now on; null for a host that has none. `time` stays the caller's.
    void setTime(const VstTimeInfo* time);
    std::vector<HostCall> callsOf(VstInt32 opcode) const;

    std::vector<HostCall> calls;
    std::map<VstInt32, VstIntPtr> results{{audioMasterVersion, kVstVersion}};
    std::function<void(const HostCall&)> onCall; // runs before the plug-in gets its result
};

// A host's time record that holds a tempo (beats per minute), flagged as valid or not.
VstTimeInfo timeWithTempo(double tempo, VstInt32 flags = kVstTempoValid);
