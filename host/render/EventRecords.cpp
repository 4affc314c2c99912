#include "host/render/EventRecords.h"

#include <new>

namespace zelvatone {

namespace {

constexpr std::uint8_t kExclusive = 0xF0;

// Pointers begin where the record's own list does; the record's size leaves room for two more.
constexpr std::size_t kRecordWords = sizeof(VstEvents) / sizeof(VstIntPtr);
static_assert(offsetof(VstEvents, events) % sizeof(VstIntPtr) == 0);

VstMidiEvent midiEvent(std::span<const std::uint8_t> message) {
    VstMidiEvent record{};
    record.type = kVstMidiType;
    record.byteSize = sizeof record;
    for (std::size_t i = 0; i < message.size(); ++i) {
        record.midiData[i] = static_cast<char>(message[i]);
    }
    return record;
}

VstMidiSysexEvent exclusiveEvent(std::span<const std::uint8_t> message) {
    VstMidiSysexEvent record{};
    record.type = kVstSysExType;
    record.byteSize = sizeof record;
    record.dumpBytes = static_cast<VstInt32>(message.size());
    // The record knows no const; plug-ins only read.
    record.sysexDump = reinterpret_cast<char*>(const_cast<std::uint8_t*>(message.data()));
    return record;
}

} // namespace

EventRecords::EventRecords(const EventCounts& most) : most_(most) {
    midi_.reserve(most.midi);
    exclusive_.reserve(most.exclusive);
    list_.resize(kRecordWords + most.midi + most.exclusive);
    new (list_.data()) VstEvents{};
}

bool EventRecords::isFullFor(std::span<const std::uint8_t> message) const {
    return message[0] == kExclusive ? exclusive_.size() == most_.exclusive
                                    : midi_.size() == most_.midi;
}

void EventRecords::add(std::int32_t offset, std::span<const std::uint8_t> message) {
    VstEvents* events = head();
    VstEvent*& entry = static_cast<VstEvent**>(events->events)[events->numEvents++];
    if (message[0] == kExclusive) {
        VstMidiSysexEvent& record = exclusive_.emplace_back(exclusiveEvent(message));
        record.deltaFrames = offset;
        entry = reinterpret_cast<VstEvent*>(&record);
    } else {
        VstMidiEvent& record = midi_.emplace_back(midiEvent(message));
        record.deltaFrames = offset;
        entry = reinterpret_cast<VstEvent*>(&record);
    }
}

void EventRecords::clear() {
    midi_.clear();
    exclusive_.clear();
    head()->numEvents = 0;
}

VstEvents* EventRecords::list() {
    return head()->numEvents == 0 ? nullptr : head();
}

} // namespace zelvatone
