// One block's events, laid out in memory as a host hands them over.
#pragma once

#include "vst2/aeffectx.h"

#include <cstdint>
#include <optional>
#include <vector>

struct MidiMessage {
    int status;
    int data1;
    int data2;
    VstInt32 deltaFrames = 0; // samples
};

class EventList {
public:
    EventList() = default;
    explicit EventList(const std::vector<MidiMessage>& messages);

    void add(const MidiMessage& message);
    // The same bytes under another event type, for events that only look like MIDI.
    void addAs(VstInt32 type, const MidiMessage& message);
    // A place in the list without an event.
    void addNull();

    // Valid until the list changes. With a count other than -1 the record claims that many events.
    VstEvents* record(VstInt32 claimedCount = -1);

private:
    std::vector<std::optional<VstMidiEvent>> events;
    std::vector<std::uintptr_t> memory; // of the record: a head, and as many pointers as it takes
};
