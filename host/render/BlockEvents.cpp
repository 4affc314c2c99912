#include "host/render/BlockEvents.h"

#include "host/Error.h"
#include "host/text/Format.h"

#include <algorithm>
#include <new>
#include <utility>

namespace zelvatone {

namespace {

constexpr std::uint8_t kExclusive = 0xF0;
// Events that a block takes at most, which bounds the memory of their records to some 50 MB.
// Densest songs have a tenth of it in a second; more in a block is a damaged file.
constexpr std::size_t kMostAtOnce = std::size_t{1} << 20U;

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

BlockEvents::BlockEvents(EventSchedule schedule, int blockSize)
    : schedule_(std::move(schedule)), blockSize_(blockSize) {
    const Counts most = fullestBlock();
    const std::size_t events = most.midi + most.exclusive;
    midi_.reserve(most.midi);
    exclusive_.reserve(most.exclusive);
    list_.resize(kRecordWords + events);
}

BlockEvents::Counts BlockEvents::fullestBlock() const {
    Counts most;
    Counts counts;
    std::int64_t block = -1;
    for (EventSchedule events = schedule_; !events.atEnd(); events.advance()) {
        if (events.frame() / blockSize_ != block) {
            block = events.frame() / blockSize_;
            counts = {};
        }
        ++(events.message()[0] == kExclusive ? counts.exclusive : counts.midi);
        if (counts.midi + counts.exclusive > kMostAtOnce) {
            throw InputError(formatText("more than {} events of the song fall into {} samples",
                                        kMostAtOnce, blockSize_));
        }
        most.midi = std::max(most.midi, counts.midi);
        most.exclusive = std::max(most.exclusive, counts.exclusive);
    }
    return most;
}

VstEvent* BlockEvents::addMessage() {
    const auto message = schedule_.message();
    const auto offset = static_cast<VstInt32>(schedule_.frame() - blockStart_);
    if (message[0] == kExclusive) {
        VstMidiSysexEvent& record = exclusive_.emplace_back(exclusiveEvent(message));
        record.deltaFrames = offset;
        return reinterpret_cast<VstEvent*>(&record);
    }
    VstMidiEvent& record = midi_.emplace_back(midiEvent(message));
    record.deltaFrames = offset;
    return reinterpret_cast<VstEvent*>(&record);
}

VstEvents* BlockEvents::next() {
    midi_.clear();
    exclusive_.clear();
    auto* events = new (list_.data()) VstEvents{};
    VstEvent** entries = events->events;
    for (; !schedule_.atEnd() && schedule_.frame() < blockStart_ + blockSize_;
         schedule_.advance()) {
        entries[events->numEvents++] = addMessage();
    }
    blockStart_ += blockSize_;
    return events->numEvents == 0 ? nullptr : events;
}

} // namespace zelvatone
