// The records of the published VST 2.4 interface that a request's pointer leads to: events,
// time information, pin properties, the editor's rectangle and a key press.
#pragma once

#include "vst2/aeffect.h"

#include <cstdint>

// Says that this header defines VstKeyCode: a GUI toolkit that brings a definition of its own
// leaves it out when it sees the macro.
#ifndef __aeffectx__
#define __aeffectx__ // NOLINT(bugprone-reserved-identifier): the name that toolkits look for
#endif

#pragma pack(push, 8)

enum VstEventTypes : VstInt32 { kVstMidiType = 1, kVstSysExType = 6 };

// Head that all event records share.
struct VstEvent {
    VstInt32 type;        // VstEventTypes
    VstInt32 byteSize;    // of the event, without type and byteSize
    VstInt32 deltaFrames; // samples from the start of the block
    VstInt32 flags;
    char data[16];
};

// One block's events; `events` continues after the record for numEvents pointers.
struct VstEvents {
    VstInt32 numEvents;
    VstIntPtr reserved;
    VstEvent* events[2];
};

struct VstMidiEvent {
    VstInt32 type;     // kVstMidiType
    VstInt32 byteSize; // sizeof (VstMidiEvent)
    VstInt32 deltaFrames;
    VstInt32 flags;
    VstInt32 noteLength; // samples, 0 when unknown
    VstInt32 noteOffset;
    char midiData[4]; // one to three MIDI bytes, the rest 0
    char detune;      // cents
    char noteOffVelocity;
    char reserved1;
    char reserved2;
};

struct VstMidiSysexEvent {
    VstInt32 type;     // kVstSysExType
    VstInt32 byteSize; // sizeof (VstMidiSysexEvent)
    VstInt32 deltaFrames;
    VstInt32 flags;
    VstInt32 dumpBytes;
    VstIntPtr resvd1;
    char* sysexDump;
    VstIntPtr resvd2;
};

// Where the host's transport stands. Which fields hold a value is said by `flags`.
struct VstTimeInfo {
    double samplePos;
    double sampleRate;  // Hz
    double nanoSeconds; // system time
    double ppqPos;      // quarter notes
    double tempo;       // quarter notes per minute
    double barStartPos; // quarter notes
    double cycleStartPos;
    double cycleEndPos;
    VstInt32 timeSigNumerator;
    VstInt32 timeSigDenominator;
    VstInt32 smpteOffset;
    VstInt32 smpteFrameRate;
    VstInt32 samplesToNextClock;
    VstInt32 flags; // VstTimeInfoFlags
};

enum VstTimeInfoFlags : VstInt32 {
    kVstTransportChanged = 1,
    kVstTransportPlaying = 1 << 1,
    kVstTransportCycleActive = 1 << 2,
    kVstTransportRecording = 1 << 3,
    kVstNanosValid = 1 << 8,
    kVstPpqPosValid = 1 << 9,
    kVstTempoValid = 1 << 10,
    kVstBarsValid = 1 << 11,
    kVstCyclePosValid = 1 << 12,
    kVstTimeSigValid = 1 << 13,
    kVstSmpteValid = 1 << 14,
    kVstClockValid = 1 << 15
};

enum VstPinPropertiesFlags : VstInt32 {
    kVstPinIsActive = 1 << 0,
    kVstPinIsStereo = 1 << 1,
    kVstPinUseSpeaker = 1 << 2
};

struct VstPinProperties {
    char label[kVstMaxLabelLen];
    VstInt32 flags; // VstPinPropertiesFlags
    VstInt32 arrangementType;
    char shortLabel[kVstMaxShortLabelLen];
    char future[48];
};

// Pixels.
struct ERect {
    std::int16_t top;
    std::int16_t left;
    std::int16_t bottom;
    std::int16_t right;
};

struct VstKeyCode {
    VstInt32 character;
    unsigned char virt;
    unsigned char modifier;
};

#pragma pack(pop)
