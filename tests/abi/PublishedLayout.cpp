// The published interface by hand arithmetic, for 64-bit pointers: the compiler stops a change of a
// field or a number in src/vst2. Also covers what the independent header of abi_tests does not
// have.
#include "vst2/aeffectx.h"

#include <cstddef>

namespace {

constexpr std::size_t kInt = 4;
constexpr std::size_t kPointer = 8;
constexpr std::size_t kFloat = 4;
constexpr std::size_t kDouble = 8;

static_assert(sizeof(VstInt32) == kInt && sizeof(VstIntPtr) == kPointer);
static_assert(sizeof(void*) == kPointer && sizeof(float) == kFloat && sizeof(double) == kDouble);

// AEffect: a padded magic, four calls, five integers (padded), two reserved pointers, three
// integers and a float, two pointers, two integers, two calls, 56 reserved bytes.
static_assert(offsetof(AEffect, magic) == 0);
static_assert(offsetof(AEffect, dispatcher) == kInt + 4);
static_assert(offsetof(AEffect, process) == 8 + kPointer);
static_assert(offsetof(AEffect, setParameter) == 8 + 2 * kPointer);
static_assert(offsetof(AEffect, getParameter) == 8 + 3 * kPointer);
static_assert(offsetof(AEffect, numPrograms) == 8 + 4 * kPointer); // 40
static_assert(offsetof(AEffect, numParams) == 40 + kInt);
static_assert(offsetof(AEffect, numInputs) == 40 + 2 * kInt);
static_assert(offsetof(AEffect, numOutputs) == 40 + 3 * kInt);
static_assert(offsetof(AEffect, flags) == 40 + 4 * kInt); // 56, ends at 60, padded to 64
static_assert(offsetof(AEffect, resvd1) == 64);
static_assert(offsetof(AEffect, resvd2) == 64 + kPointer);
static_assert(offsetof(AEffect, initialDelay) == 64 + 2 * kPointer); // 80
static_assert(offsetof(AEffect, realQualities) == 80 + kInt);
static_assert(offsetof(AEffect, offQualities) == 80 + 2 * kInt);
static_assert(offsetof(AEffect, ioRatio) == 80 + 3 * kInt);
static_assert(offsetof(AEffect, object) == 80 + 3 * kInt + kFloat); // 96
static_assert(offsetof(AEffect, user) == 96 + kPointer);
static_assert(offsetof(AEffect, uniqueID) == 96 + 2 * kPointer); // 112
static_assert(offsetof(AEffect, version) == 112 + kInt);
static_assert(offsetof(AEffect, processReplacing) == 112 + 2 * kInt); // 120
static_assert(offsetof(AEffect, processDoubleReplacing) == 120 + kPointer);
static_assert(offsetof(AEffect, future) == 120 + 2 * kPointer); // 136
static_assert(sizeof(AEffect) == 136 + 56);

// Events: a head of four integers; all but SysEx fill 32 bytes.
static_assert(offsetof(VstEvent, flags) == 3 * kInt);
static_assert(offsetof(VstEvent, data) == 4 * kInt);
static_assert(sizeof(VstEvent) == 4 * kInt + 16);
static_assert(offsetof(VstMidiEvent, noteLength) == 4 * kInt);
static_assert(offsetof(VstMidiEvent, noteOffset) == 5 * kInt);
static_assert(offsetof(VstMidiEvent, midiData) == 6 * kInt);
static_assert(offsetof(VstMidiEvent, detune) == 6 * kInt + 4);
static_assert(offsetof(VstMidiEvent, noteOffVelocity) == 6 * kInt + 5);
static_assert(sizeof(VstMidiEvent) == sizeof(VstEvent));
static_assert(offsetof(VstMidiSysexEvent, dumpBytes) == 4 * kInt);
static_assert(offsetof(VstMidiSysexEvent, resvd1) == 5 * kInt + 4); // 24
static_assert(offsetof(VstMidiSysexEvent, sysexDump) == 24 + kPointer);
static_assert(sizeof(VstMidiSysexEvent) == 24 + 3 * kPointer);
static_assert(offsetof(VstEvents, reserved) == kInt + 4);
static_assert(offsetof(VstEvents, events) == 8 + kPointer);
static_assert(sizeof(VstEvents) == 8 + 3 * kPointer);

// Time: eight doubles and six integers.
static_assert(offsetof(VstTimeInfo, tempo) == 4 * kDouble);
static_assert(offsetof(VstTimeInfo, timeSigNumerator) == 8 * kDouble); // 64
static_assert(offsetof(VstTimeInfo, smpteOffset) == 64 + 2 * kInt);
static_assert(offsetof(VstTimeInfo, smpteFrameRate) == 64 + 3 * kInt);
static_assert(offsetof(VstTimeInfo, samplesToNextClock) == 64 + 4 * kInt);
static_assert(offsetof(VstTimeInfo, flags) == 64 + 5 * kInt);
static_assert(sizeof(VstTimeInfo) == 64 + 6 * kInt);

// Pins: 64 + 4 + 4 + 8 + 48.
static_assert(offsetof(VstPinProperties, flags) == 64);
static_assert(offsetof(VstPinProperties, arrangementType) == 64 + kInt);
static_assert(offsetof(VstPinProperties, shortLabel) == 64 + 2 * kInt);
static_assert(offsetof(VstPinProperties, future) == 64 + 2 * kInt + 8);
static_assert(sizeof(VstPinProperties) == 128);
static_assert(kVstPinIsActive == 1 && kVstPinIsStereo == 2 && kVstPinUseSpeaker == 4);

static_assert(offsetof(ERect, top) == 0 && offsetof(ERect, left) == 2);
static_assert(offsetof(ERect, bottom) == 4 && offsetof(ERect, right) == 6 && sizeof(ERect) == 8);
static_assert(offsetof(VstKeyCode, virt) == kInt && offsetof(VstKeyCode, modifier) == kInt + 1);

static_assert(kVstMaxProgNameLen == 24 && kVstMaxParamStrLen == 8);
static_assert(kVstMaxEffectNameLen == 32 && kVstMaxVendorStrLen == 64);
static_assert(kVstMaxProductStrLen == 64 && kVstMaxLabelLen == 64 && kVstMaxShortLabelLen == 8);

// Requests. 36, 37, 43, 46, 53 to 55 and 57 were withdrawn; the names between count on.
static_assert(effGetPlugCategory == 35 && effOfflineNotify == 38 && effOfflinePrepare == 39);
static_assert(effOfflineRun == 40 && effProcessVarIo == 41 && effSetSpeakerArrangement == 42);
static_assert(effSetBypass == 44 && effGetEffectName == 45 && effGetVendorString == 47);
static_assert(effCanDo == 51 && effGetTailSize == 52 && effGetParameterProperties == 56);
static_assert(effGetVstVersion == 58 && effEditKeyDown == 59 && effEditKeyUp == 60);
static_assert(effSetEditKnobMode == 61 && effGetMidiProgramName == 62);
static_assert(effGetCurrentMidiProgram == 63 && effGetMidiProgramCategory == 64);
static_assert(effHasMidiProgramsChanged == 65 && effGetMidiKeyName == 66);
static_assert(effBeginSetProgram == 67 && effEndSetProgram == 68);
static_assert(effGetSpeakerArrangement == 69 && effSetTotalSampleToProcess == 73);
static_assert(effSetPanLaw == 74 && effBeginLoadBank == 75 && effBeginLoadProgram == 76);
static_assert(effSetProcessPrecision == 77 && effGetNumMidiInputChannels == 78);
static_assert(effGetNumMidiOutputChannels == 79);

// Host services.
static_assert(audioMasterIdle == 3 && audioMasterIOChanged == 13);
static_assert(audioMasterGetInputLatency == 18 && audioMasterGetOutputLatency == 19);
static_assert(audioMasterGetAutomationState == 24 && audioMasterVendorSpecific == 35);
static_assert(audioMasterGetLanguage == 38 && audioMasterGetDirectory == 41);
static_assert(audioMasterUpdateDisplay == 42);

} // namespace
