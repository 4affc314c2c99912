// The published VST 2.4 plug-in interface: the record through which host and plug-in call each
// other, and the request numbers in both directions. Layouts and numbers are fixed by that
// interface; tests/abi checks them against an independent header.
#pragma once

#include <cstdint>

using VstInt32 = std::int32_t;
using VstIntPtr = std::intptr_t;

struct AEffect;

// Host service entry, given to the plug-in's entry point. `effect` is null until the plug-in has
// a record of its own.
using audioMasterCallback = VstIntPtr (*)(AEffect* effect, VstInt32 opcode, VstInt32 index,
                                          VstIntPtr value, void* ptr, float opt);
using AEffectDispatcherProc = VstIntPtr (*)(AEffect* effect, VstInt32 opcode, VstInt32 index,
                                            VstIntPtr value, void* ptr, float opt);
using AEffectProcessProc = void (*)(AEffect* effect, float** inputs, float** outputs,
                                    VstInt32 sampleFrames);
using AEffectProcessDoubleProc = void (*)(AEffect* effect, double** inputs, double** outputs,
                                          VstInt32 sampleFrames);
using AEffectSetParameterProc = void (*)(AEffect* effect, VstInt32 index, float value);
using AEffectGetParameterProc = float (*)(AEffect* effect, VstInt32 index);

// Four characters as the interface writes them: the first one most significant.
constexpr VstInt32 vstFourCharacters(char a, char b, char c, char d) {
    const auto byte = [](char x) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(x));
    };
    return static_cast<VstInt32>((byte(a) << 24) | (byte(b) << 16) | (byte(c) << 8) | byte(d));
}

constexpr VstInt32 kEffectMagic = vstFourCharacters('V', 's', 't', 'P');
constexpr VstInt32 kVstVersion = 2400;

#pragma pack(push, 8)

struct AEffect {
    VstInt32 magic; // kEffectMagic
    AEffectDispatcherProc dispatcher;
    AEffectProcessProc process; // accumulating, deprecated
    AEffectSetParameterProc setParameter;
    AEffectGetParameterProc getParameter;
    VstInt32 numPrograms;
    VstInt32 numParams;
    VstInt32 numInputs;
    VstInt32 numOutputs;
    VstInt32 flags;   // VstAEffectFlags
    VstIntPtr resvd1; // both reserved for the host
    VstIntPtr resvd2;
    VstInt32 initialDelay;  // samples
    VstInt32 realQualities; // this and the next two: deprecated
    VstInt32 offQualities;
    float ioRatio;
    void* object; // the plug-in's own object
    void* user;   // the host's own use
    VstInt32 uniqueID;
    VstInt32 version;
    AEffectProcessProc processReplacing;
    AEffectProcessDoubleProc processDoubleReplacing;
    char future[56];
};

#pragma pack(pop)

enum VstAEffectFlags : VstInt32 {
    effFlagsHasEditor = 1 << 0,
    effFlagsCanReplacing = 1 << 4,
    effFlagsProgramChunks = 1 << 5,
    effFlagsIsSynth = 1 << 8,
    effFlagsNoSoundInStop = 1 << 9,
    effFlagsCanDoubleReplacing = 1 << 12
};

// Host to plug-in. The gaps are requests that the interface withdrew.
enum AEffectOpcodes : VstInt32 {
    effOpen = 0,
    effClose = 1,
    effSetProgram = 2,
    effGetProgram = 3,
    effSetProgramName = 4,
    effGetProgramName = 5,
    effGetParamLabel = 6,
    effGetParamDisplay = 7,
    effGetParamName = 8,
    effSetSampleRate = 10,
    effSetBlockSize = 11,
    effMainsChanged = 12,
    effEditGetRect = 13,
    effEditOpen = 14,
    effEditClose = 15,
    effEditIdle = 19,
    effIdentify = 22,
    effGetChunk = 23,
    effSetChunk = 24,
    effProcessEvents = 25,
    effCanBeAutomated = 26,
    effString2Parameter = 27,
    effGetProgramNameIndexed = 29,
    effGetInputProperties = 33,
    effGetOutputProperties = 34,
    effGetPlugCategory = 35,
    effOfflineNotify = 38,
    effOfflinePrepare = 39,
    effOfflineRun = 40,
    effProcessVarIo = 41,
    effSetSpeakerArrangement = 42,
    effSetBypass = 44,
    effGetEffectName = 45,
    effGetVendorString = 47,
    effGetProductString = 48,
    effGetVendorVersion = 49,
    effVendorSpecific = 50,
    effCanDo = 51,
    effGetTailSize = 52,
    effGetParameterProperties = 56,
    effGetVstVersion = 58,
    effEditKeyDown = 59,
    effEditKeyUp = 60,
    effSetEditKnobMode = 61,
    effGetMidiProgramName = 62,
    effGetCurrentMidiProgram = 63,
    effGetMidiProgramCategory = 64,
    effHasMidiProgramsChanged = 65,
    effGetMidiKeyName = 66,
    effBeginSetProgram = 67,
    effEndSetProgram = 68,
    effGetSpeakerArrangement = 69,
    effShellGetNextPlugin = 70,
    effStartProcess = 71,
    effStopProcess = 72,
    effSetTotalSampleToProcess = 73,
    effSetPanLaw = 74,
    effBeginLoadBank = 75,
    effBeginLoadProgram = 76,
    effSetProcessPrecision = 77,
    effGetNumMidiInputChannels = 78,
    effGetNumMidiOutputChannels = 79
};

// Plug-in to host.
enum AudioMasterOpcodes : VstInt32 {
    audioMasterAutomate = 0,
    audioMasterVersion = 1,
    audioMasterCurrentId = 2,
    audioMasterIdle = 3,
    audioMasterWantMidi = 6,
    audioMasterGetTime = 7,
    audioMasterProcessEvents = 8,
    audioMasterIOChanged = 13,
    audioMasterSizeWindow = 15,
    audioMasterGetSampleRate = 16,
    audioMasterGetBlockSize = 17,
    audioMasterGetInputLatency = 18,
    audioMasterGetOutputLatency = 19,
    audioMasterGetCurrentProcessLevel = 23,
    audioMasterGetAutomationState = 24,
    audioMasterGetVendorString = 32,
    audioMasterGetProductString = 33,
    audioMasterGetVendorVersion = 34,
    audioMasterVendorSpecific = 35,
    audioMasterCanDo = 37,
    audioMasterGetLanguage = 38,
    audioMasterGetDirectory = 41,
    audioMasterUpdateDisplay = 42,
    audioMasterBeginEdit = 43,
    audioMasterEndEdit = 44
};

// Text lengths in characters, without the terminating zero.
constexpr int kVstMaxProgNameLen = 24;
constexpr int kVstMaxParamStrLen = 8;
constexpr int kVstMaxEffectNameLen = 32;
constexpr int kVstMaxVendorStrLen = 64;
constexpr int kVstMaxProductStrLen = 64;
constexpr int kVstMaxLabelLen = 64;
constexpr int kVstMaxShortLabelLen = 8;

enum VstPlugCategory : VstInt32 {
    kPlugCategUnknown = 0,
    kPlugCategEffect = 1,
    kPlugCategSynth = 2
};
