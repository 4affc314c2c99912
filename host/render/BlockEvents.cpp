#include "host/render/BlockEvents.h"

#include <algorithm>
#include <new>
#include <utility>

namespace zelvatone {

namespace {

constexpr std::uint8_t kExclusive = 0xF0;

// Pointers begin where the record's own list does; the record's size leaves room for two more.
constexpr std::size_t kRecordWords = sizeof(VstEvents) / sizeof(VstIntPtr);
static_assert(offsetof(VstEvents, events) % sizeof(VstIntPtr) == 0);

VstMidiEvent midiEvent(const SongEvent& event) {
    VstMidiEvent record{};
    record.type = kVstMidiType;
    record.byteSize = sizeof record;
    for (std::size_t i = 0; i < event.bytes.size(); ++i) {
        record.midiData[i] = static_cast<char>(event.bytes[i]);
    }
    return record;
}

VstMidiSysexEvent exclusiveEvent(const SongEvent& event) {
    VstMidiSysexEvent record{};
    record.type = kVstSysExType;
    record.byteSize = sizeof record;
    record.dumpBytes = static_cast<VstInt32>(event.bytes.size());
    // The record knows no const; plug-ins only read.
    record.sysexDump = reinterpret_cast<char*>(const_cast<std::uint8_t*>(event.bytes.data()));
    return record;
}

} // namespace

BlockEvents::BlockEvents(EventSchedule schedule, int blockSize)
    : schedule_(std::move(schedule)), blockSize_(blockSize) {
    const std::size_t most = fullestBlock();
    midi_.reserve(most);
    exclusive_.reserve(most);
    list_.resize(kRecordWords + most);
}

std::size_t BlockEvents::fullestBlock() const {
    std::size_t most = 0;
    std::size_t count = 0;
    std::int64_t block = -1;
    for (const ScheduledEvent& scheduled : schedule_) {
        const std::int64_t its = scheduled.frame / blockSize_;
        count = its == block ? count + 1 : 1;
        block = its;
        most = std::max(most, count);
    }
    return most;
}

VstEvent* BlockEvents::addMessage(const ScheduledEvent& scheduled) {
    const auto offset = static_cast<VstInt32>(scheduled.frame - blockStart_);
    if (scheduled.event->bytes[0] == kExclusive) {
        VstMidiSysexEvent& record = exclusive_.emplace_back(exclusiveEvent(*scheduled.event));
        record.deltaFrames = offset;
        return reinterpret_cast<VstEvent*>(&record);
    }
    VstMidiEvent& record = midi_.emplace_back(midiEvent(*scheduled.event));
    record.deltaFrames = offset;
    return reinterpret_cast<VstEvent*>(&record);
}

VstEvents* BlockEvents::next() {
    midi_.clear();
    exclusive_.clear();
    auto* events = new (list_.data()) VstEvents{};
    VstEvent** entries = events->events;
    while (position_ < schedule_.size() && schedule_[position_].frame < blockStart_ + blockSize_) {
        entries[events->numEvents++] = addMessage(schedule_[position_++]);
    }
    blockStart_ += blockSize_;
    return events->numEvents == 0 ? nullptr : events;
}

} // namespace zelvatone
