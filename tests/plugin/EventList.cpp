#include "tests/plugin/EventList.h"

#include <algorithm>
#include <cstddef>

EventList::EventList(const std::vector<MidiMessage>& messages) {
    for (const MidiMessage& message : messages) {
        add(message);
    }
}

void EventList::add(const MidiMessage& message) {
    addAs(kVstMidiType, message);
}

void EventList::addAs(VstInt32 type, const MidiMessage& message) {
    VstMidiEvent event{};
    event.type = type;
    event.byteSize = sizeof event;
    event.deltaFrames = message.deltaFrames;
    event.midiData[0] = static_cast<char>(message.status);
    event.midiData[1] = static_cast<char>(message.data1);
    event.midiData[2] = static_cast<char>(message.data2);
    events.emplace_back(event);
}

void EventList::addNull() {
    events.emplace_back();
}

VstEvents* EventList::record(VstInt32 claimedCount) {
    constexpr std::size_t kHeadSize = offsetof(VstEvents, events) / sizeof(std::uintptr_t);
    memory.assign(kHeadSize + std::max<std::size_t>(events.size(), 2), 0);
    std::transform(events.begin(), events.end(), memory.begin() + kHeadSize, [](auto& event) {
        return event ? reinterpret_cast<std::uintptr_t>(&*event) : 0;
    });
    auto* record = reinterpret_cast<VstEvents*>(memory.data());
    record->numEvents = claimedCount == -1 ? static_cast<VstInt32>(events.size()) : claimedCount;
    return record;
}
