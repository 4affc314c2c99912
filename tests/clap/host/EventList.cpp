#include "tests/clap/host/EventList.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace zelvatone::test {

namespace {

clap::EventHeader header(std::size_t size, std::uint32_t time, clap::EventType type) {
    return {.size = static_cast<std::uint32_t>(size),
            .time = time,
            .space = clap::kCoreEventSpace,
            .type = type,
            .flags = 0};
}

} // namespace

clap::ParamValueEvent paramValue(std::uint32_t time, std::uint32_t id, double value, void* cookie) {
    clap::ParamValueEvent event{};
    event.header = header(sizeof event, time, clap::kParamValue);
    event.param = id;
    event.cookie = cookie;
    event.noteId = -1;
    event.port = -1;
    event.channel = -1;
    event.key = -1;
    event.value = value;
    return event;
}

clap::NoteEvent note(std::uint32_t time, clap::EventType type, std::int16_t key, double velocity,
                     std::int32_t noteId, std::int16_t channel) {
    clap::NoteEvent event{};
    event.header = header(sizeof event, time, type);
    event.noteId = noteId;
    event.port = 0;
    event.channel = channel;
    event.key = key;
    event.velocity = velocity;
    return event;
}

clap::MidiEvent midi(std::uint32_t time, std::uint8_t status, std::uint8_t data1,
                     std::uint8_t data2) {
    clap::MidiEvent event{};
    event.header = header(sizeof event, time, clap::kMidi);
    event.data[0] = status;
    event.data[1] = data1;
    event.data[2] = data2;
    return event;
}

clap::TransportEvent tempo(std::uint32_t time, double beatsPerMinute) {
    clap::TransportEvent event{};
    event.header = header(sizeof event, time, clap::kTransport);
    event.flags = clap::kTransportHasTempo;
    event.tempo = beatsPerMinute;
    return event;
}

InputList::InputList() : record_{.context = this, .size = size, .get = get} {}

void InputList::addBytes(const clap::EventHeader* event, std::size_t size) {
    Slot slot(size / sizeof(std::max_align_t) + 1);
    std::memcpy(slot.data(), event, size);
    events_.push_back(std::move(slot));
}

void InputList::clear() {
    events_.clear();
}

std::uint32_t InputList::size(const clap::InputEvents* list) {
    return static_cast<std::uint32_t>(static_cast<InputList*>(list->context)->events_.size());
}

const clap::EventHeader* InputList::get(const clap::InputEvents* list, std::uint32_t index) {
    const auto& events = static_cast<InputList*>(list->context)->events_;
    return index < events.size() ? reinterpret_cast<const clap::EventHeader*>(events[index].data())
                                 : nullptr;
}

OutputList::OutputList() : record_{.context = this, .tryPush = tryPush} {}

bool OutputList::isSorted(std::size_t first) const {
    return std::is_sorted(events.begin() + static_cast<std::ptrdiff_t>(first), events.end(),
                          [](const Event& a, const Event& b) { return a.time < b.time; });
}

bool OutputList::tryPush(const clap::OutputEvents* list, const clap::EventHeader* event) {
    Event copy{.type = event->type, .time = event->time, .param = UINT32_MAX, .value = 0.0};
    if (event->type == clap::kParamValue) {
        const auto* value = reinterpret_cast<const clap::ParamValueEvent*>(event);
        copy.param = value->param;
        copy.value = value->value;
    } else if (event->type == clap::kParamGestureBegin || event->type == clap::kParamGestureEnd) {
        copy.param = reinterpret_cast<const clap::ParamGestureEvent*>(event)->param;
    }
    static_cast<OutputList*>(list->context)->events.push_back(copy);
    return true;
}

} // namespace zelvatone::test
