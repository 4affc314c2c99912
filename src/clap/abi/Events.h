// The records of CLAP for what happens in a block. See Plugin.h.
#pragma once

#include <cstdint>

namespace zelvatone::clap {

// The space of the events below; others belong to hosts' own extensions.
inline constexpr std::uint16_t kCoreEventSpace = 0;

enum EventType : std::uint16_t {
    kNoteOn = 0,
    kNoteOff = 1,
    kNoteChoke = 2,
    kNoteEnd = 3,
    kNoteExpression = 4,
    kParamValue = 5,
    kParamMod = 6,
    kParamGestureBegin = 7,
    kParamGestureEnd = 8,
    kTransport = 9,
    kMidi = 10,
    kMidiSysex = 11,
    kMidi2 = 12
};

struct EventHeader {
    std::uint32_t size; // bytes, this header included
    std::uint32_t time; // sample in the block
    std::uint16_t space;
    std::uint16_t type; // EventType
    std::uint32_t flags;
};

// In all of these -1 stands for every note, port, channel or key.
struct NoteEvent {
    EventHeader header;
    std::int32_t noteId;
    std::int16_t port;
    std::int16_t channel; // 0 to 15
    std::int16_t key;     // 0 to 127
    double velocity;      // 0 to 1
};

struct ParamValueEvent {
    EventHeader header;
    std::uint32_t param;
    void* cookie;
    std::int32_t noteId;
    std::int16_t port;
    std::int16_t channel;
    std::int16_t key;
    double value;
};

struct ParamGestureEvent {
    EventHeader header;
    std::uint32_t param;
};

enum TransportFlag : std::uint32_t { kTransportHasTempo = 1U << 0 };

struct TransportEvent {
    EventHeader header;
    std::uint32_t flags; // TransportFlag
    std::int64_t songBeats;
    std::int64_t songSeconds;
    double tempo; // beats per minute
    double tempoIncrement;
    std::int64_t loopStartBeats;
    std::int64_t loopEndBeats;
    std::int64_t loopStartSeconds;
    std::int64_t loopEndSeconds;
    std::int64_t barStart;
    std::int32_t barNumber;
    std::uint16_t signatureNumerator;
    std::uint16_t signatureDenominator;
};

struct MidiEvent {
    EventHeader header;
    std::uint16_t port;
    std::uint8_t data[3];
};

// By rising time.
struct InputEvents {
    void* context;
    std::uint32_t (*size)(const InputEvents* list);
    const EventHeader* (*get)(const InputEvents* list, std::uint32_t index);
};

struct OutputEvents {
    void* context;
    bool (*tryPush)(const OutputEvents* list, const EventHeader* event); // copies the event
};

} // namespace zelvatone::clap
